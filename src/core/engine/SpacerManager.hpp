#pragma once

#include "core/ports/StatusBarHost.hpp"

#include <cstdint>
#include <memory>
#include <vector>

namespace quillet {

// Keeps as many spacer items (empty-looking status items of Quillet's own that the user
// Command-drags between other items to group them) as the user asked for. Main thread only.
class SpacerManager {
public:
    static constexpr std::int64_t kMaxCount = 5;
    static constexpr double kSpacerLength = 22.0;

    // `statusBar` must outlive the manager.
    explicit SpacerManager(StatusBarHost& statusBar);
    SpacerManager(const SpacerManager&) = delete;
    SpacerManager& operator=(const SpacerManager&) = delete;

    // Creates or removes spacers until there are `count` of them, clamped to 0...kMaxCount.
    // The newest spacer goes first, so the autosave names in use are always the first `count`
    // of "quillet.spacer0"..."quillet.spacer4" and each keeps its remembered position.
    void setCount(std::int64_t count);

    // Oldest first.
    const std::vector<std::shared_ptr<StatusItem>>& spacers() const { return spacers_; }

private:
    std::shared_ptr<StatusItem> makeSpacer(std::size_t index);

    StatusBarHost& statusBar_;
    std::vector<std::shared_ptr<StatusItem>> spacers_;
};

} // namespace quillet
