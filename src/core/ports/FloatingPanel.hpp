#pragma once

#include "core/ports/Geometry.hpp"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace quillet {

// How a floating panel is made (NSPanel's initialiser and window properties, with AppKit's
// values).
struct PanelStyle {
    Rect contentRect; // AppKit coordinates
    std::uint64_t styleMask = 0;
    std::uint64_t backing = 2;
    bool deferred = false;
    std::int64_t level = 0;
    bool floatingPanel = false;
    bool hidesOnDeactivate = true;
    bool opaque = true;
    bool clearBackground = false;
    bool hasShadow = true;
    friend bool operator==(const PanelStyle&, const PanelStyle&) = default;
};

// A panel's content as data, drawn the same way by every renderer: a translucent rounded
// background and a centred vertical stack of text lines.
struct PanelText {
    enum class Font { headline, smallestCaption };
    std::string text;
    Font font = Font::headline;
    bool secondary = false;
    // 0: as many lines as the text needs; otherwise cut to this many, the last one truncated.
    int lineLimit = 0;
    friend bool operator==(const PanelText&, const PanelText&) = default;
};

struct PanelContent {
    double cornerRadius = 0;
    double padding = 0;
    double spacing = 0;
    std::vector<PanelText> lines;
    friend bool operator==(const PanelContent&, const PanelContent&) = default;
};

// One floating panel (NSPanel). Main thread only.
class FloatingPanel {
public:
    virtual ~FloatingPanel() = default;
    // Replaces what the panel shows.
    virtual void setContent(const PanelContent& content) = 0;
    // AppKit coordinates.
    virtual void setFrameOrigin(Point origin) = 0;
    virtual void makeKeyAndOrderFront() = 0;
    virtual void orderOut() = 0;
};

// Makes panels. Whether a panel let go of while on screen leaves the screen too is AppKit's
// affair: order it out first to be sure.
class PanelHost {
public:
    virtual ~PanelHost() = default;
    virtual std::shared_ptr<FloatingPanel> createPanel(const PanelStyle& style) = 0;
};

} // namespace quillet
