#pragma once

namespace quillet::SettingsLook {

// How the kit's components look, in points, for every renderer. Fonts are the platform's text
// styles unless a size is given; opacities apply to the named tint.

struct Page {
    static constexpr double spacing = 20;
    static constexpr double headerSpacing = 6;
    static constexpr double headerBottomPadding = 4;
    static constexpr double titleSize = 26; // bold, rounded design
    static constexpr double titleTracking = -0.4;
    static constexpr double maxWidth = 560; // against the leading edge
    static constexpr double padding = 28;
};

struct Card {
    static constexpr double titleTracking = 0.4; // upper case, subheadline semibold, secondary
    static constexpr double titleSidePadding = 4;
    static constexpr double titleBottomPadding = 8;
    static constexpr double cornerRadius = 12; // continuous corners
    static constexpr double strokeWidth = 1;
    static constexpr double strokeOpacity = 0.06; // of the primary colour
    static constexpr double footerSidePadding = 4;
    static constexpr double footerTopPadding = 8; // caption, tertiary
};

struct Row {
    static constexpr double spacing = 12;
    static constexpr double textSpacing = 2; // title: body medium; subtitle: caption secondary
    static constexpr double minimumGap = 12;
    static constexpr double sidePadding = 14;
    static constexpr double verticalPadding = 12;
};

struct Divider {
    static constexpr double leadingIndent = 52;
    static constexpr double opacity = 0.55;
};

struct IconWell {
    static constexpr double side = 36;
    static constexpr double cornerRadius = 8; // continuous corners
    static constexpr double fillOpacity = 0.14;
    static constexpr double symbolSize = 15; // semibold, hierarchical
};

struct Banner {
    static constexpr double spacing = 12;
    static constexpr double symbolSize = 16; // semibold
    static constexpr double symbolFrameWidth = 22;
    static constexpr double textSpacing = 3; // title: subheadline semibold; message: caption
    static constexpr double minimumGap = 8;
    static constexpr double padding = 14;
    static constexpr double cornerRadius = 12; // continuous corners
    static constexpr double fillOpacity = 0.1;
    static constexpr double strokeOpacity = 0.22;
    static constexpr double strokeWidth = 1;
};

struct Badge {
    static constexpr double sidePadding = 8;
    static constexpr double verticalPadding = 4;
    static constexpr double fillOpacity = 0.06; // of the primary colour, on a capsule
};

// A menu bar item's row: a row with these differences.
struct ItemRow {
    static constexpr double verticalPadding = 10;
    static constexpr double wellFillOpacity = 0.06; // of the primary colour
    static constexpr double pictureSide = 22;       // centred on the well
    static constexpr double symbolSize = 14;        // semibold, hierarchical, secondary
    static constexpr double snapshotPadding = 2;
    static constexpr double snapshotCornerRadius = 5;    // continuous corners
    static constexpr double snapshotPlateOpacity = 0.75; // of black
};

// The search field across a page: symbol, field and buttons in a row.
struct SearchBar {
    static constexpr double spacing = 8;
    static constexpr double sidePadding = 12;
    static constexpr double verticalPadding = 9;
    static constexpr double cornerRadius = 10;    // filled with the control background colour
    static constexpr double strokeOpacity = 0.06; // of the primary colour, 1 point, inside
};

// A caption line between cards: caption font, secondary colour.
struct Caption {
    static constexpr double sidePadding = 4;
};

struct Sidebar {
    static constexpr double minWidth = 168;
    static constexpr double idealWidth = 188;
    static constexpr double maxWidth = 228;
};

// What the split view asks of the window.
struct Content {
    static constexpr double minWidth = 680;
    static constexpr double idealWidth = 760;
    static constexpr double minHeight = 520;
    static constexpr double idealHeight = 600;
};

} // namespace quillet::SettingsLook
