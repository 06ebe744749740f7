#pragma once

#include "core/menubar/ItemEnumerator.hpp"
#include "core/ports/Geometry.hpp"
#include "core/ports/StatusBarHost.hpp"

#include <memory>
#include <vector>

namespace quillet {

class DisplayGeometry;

// The status bar as Quillet's own parts use it, keeping track of every item they create (the
// control items and the spacers). Without the Screen Recording grant the window list of macOS 26
// names none of them and gives Control Center as the owner of every item window, ours included:
// where AppKit put our items is then the only way to leave them out of what is listed as other
// applications' items. Main thread only.
class OwnStatusItems final : public StatusBarHost {
public:
    // Both must outlive this.
    OwnStatusItems(StatusBarHost& statusBar, const DisplayGeometry& displays)
        : statusBar_(statusBar), displays_(displays) {}

    std::shared_ptr<StatusItem> createStatusItem(double length) override;
    void removeStatusItem(const std::shared_ptr<StatusItem>& item) override;

    // Our items that have a window, with their frames in the window server's coordinates.
    std::vector<OwnItemFrame> windowServerFrames() const;

private:
    StatusBarHost& statusBar_;
    const DisplayGeometry& displays_;
    // Weak: an item lives as long as the part that made it holds it.
    std::vector<std::weak_ptr<StatusItem>> items_;
};

} // namespace quillet
