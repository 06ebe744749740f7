#include "core/menubar/SystemItemCatalog.hpp"

#include "core/menubar/IdentityResolver.hpp"
#include "core/support/Text.hpp"

#include <array>
#include <cctype>
#include <regex>

namespace quillet::SystemItemCatalog {

namespace {

struct Row {
    const char* windowName;
    const char* displayName;
    bool movable;
    bool hideable;
    const char* symbolName;
};

// In the order the catalog is documented; Control Center, the clock, Siri and the menu bar's
// own item cannot be moved, and the privacy indicators must stay in sight.
constexpr std::array<Row, 22> kRows{{
    {"BentoBox", "Control Center", false, false, "switch.2"},
    {"Clock", "Clock", false, false, "clock"},
    {"Siri", "Siri", false, false, "mic"},
    {"AudioVideoModule", "Recording Indicator", true, false, "record.circle"},
    {"FaceTime", "FaceTime", true, false, "video"},
    {"MusicRecognition", "Music Recognition", true, false, "shazam.logo"},
    // A non-breaking hyphen, so that the label never wraps between "Wi" and "Fi".
    {"WiFi", "Wi\u2011Fi", true, true, "wifi"},
    {"Battery", "Battery", true, true, "battery.100"},
    {"Bluetooth", "Bluetooth", true, true, "dot.radiowaves.left.and.right"},
    {"Sound", "Sound", true, true, "speaker.wave.2"},
    {"NowPlaying", "Now Playing", true, true, "play.circle"},
    {"FocusModes", "Focus", true, true, "moon.fill"},
    {"ScreenMirroring", "Screen Mirroring", true, true, "rectangle.on.rectangle"},
    {"StageManager", "Stage Manager", true, true, "rectangle.stack"},
    {"UserSwitcher", "Fast User Switching", true, true, "person.crop.circle"},
    {"KeyboardBrightness", "Keyboard Brightness", true, true, "keyboard"},
    {"AccessibilityShortcuts", "Accessibility Shortcuts", true, true, "accessibility"},
    {"Display", "Display", true, true, "sun.max"},
    {"Hearing", "Hearing", true, true, "ear"},
    {"Shortcuts", "Shortcuts", true, true, "square.2.layers.3d"},
    {"Timer", "Timer", true, true, "timer"},
    {"MainMenuBarItem", "Menu Bar", false, false, "menubar.rectangle"},
}};

Info fallback(std::string_view name) {
    return {std::string(name), true, true, "circle.grid.2x2"};
}

// Numbered instances of one system item ("Battery-2") share its row. Most names do not end in a
// digit, and those skip the pattern.
std::string normalised(std::string_view name) {
    if (name.empty() || !std::isdigit(static_cast<unsigned char>(name.back()))) {
        return std::string(name);
    }
    static const std::regex numberedSuffix("-\\d+$");
    return std::regex_replace(std::string(name), numberedSuffix, "");
}

std::optional<Info> lookup(std::string_view name) {
    const auto& table = known();
    if (auto row = table.find(normalised(name)); row != table.end()) {
        return row->second;
    }
    return fallback(name);
}

constexpr std::string_view kMenuExtraPrefix = "com.apple.menuextra.";

} // namespace

std::optional<Info> infoForMenuExtra(std::string_view identifier) {
    if (!identifier.starts_with(kMenuExtraPrefix)) {
        return std::nullopt;
    }
    std::string name = lowercased(identifier.substr(kMenuExtraPrefix.size()));
    name = name == "controlcenter" ? "bentobox" : name;
    for (const auto& [windowName, row] : known()) {
        if (lowercased(windowName) == name) {
            return row;
        }
    }
    return fallback(identifier);
}

const std::unordered_set<std::string>& systemOwners() {
    static const std::unordered_set<std::string> owners{"Control Center", "SystemUIServer"};
    return owners;
}

const std::unordered_map<std::string, Info>& known() {
    static const auto table = [] {
        std::unordered_map<std::string, Info> rows;
        for (const Row& row : kRows) {
            rows.emplace(row.windowName,
                         Info{row.displayName, row.movable, row.hideable, row.symbolName});
        }
        return rows;
    }();
    return table;
}

std::optional<Info> info(const std::optional<std::string>& windowName, std::string_view owner) {
    if (!systemOwners().contains(std::string(owner))) {
        return std::nullopt;
    }
    if (!windowName || windowName->empty()) {
        return std::nullopt;
    }
    if (windowName->starts_with("Item-") || IdentityResolver::looksLikeBundleID(*windowName)) {
        return std::nullopt;
    }
    return lookup(*windowName);
}

std::optional<Info> info(std::string_view ruleKey) {
    if (!ruleKey.starts_with(kRuleKeyPrefix)) {
        return std::nullopt;
    }
    return lookup(ruleKey.substr(kRuleKeyPrefix.size()));
}

std::string ruleKey(std::string_view windowName) {
    return std::string(kRuleKeyPrefix) + std::string(windowName);
}

} // namespace quillet::SystemItemCatalog
