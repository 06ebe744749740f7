#include "core/engine/HostedNotices.hpp"

#include <string_view>
#include <vector>

namespace quillet::HostedNotices {

namespace {

constexpr std::string_view kMenuBarSettingsURL =
    "x-apple.systempreferences:com.apple.MenuBarSettings";
constexpr std::string_view kOnlyYou = "On this Mac only you can move menu bar items. ";

std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        text += i == 0 ? "" : i + 1 == names.size() ? " and " : ", ";
        text += names[i];
    }
    return text;
}

std::string them(const std::vector<std::string>& names) {
    return names.size() == 1 ? "it" : "them";
}

// Something to do once, with nothing Quillet could open for it.
Notice askOnce(std::string key, std::string line, std::string title, std::string text) {
    return {std::move(key), std::move(line), Alert{std::move(title), std::move(text), {"OK"}},
            std::nullopt};
}

} // namespace

Notice collapseFailed(const std::string& what, std::size_t waitingSeparators) {
    const bool asking = waitingSeparators > 0;
    const std::string count = std::to_string(waitingSeparators);
    return askOnce(
        "collapse-failed",
        "Quillet: hiding did not work — " + what + ", so the hidden items are shown again" +
            (asking ? "; Command-drag the " + count +
                          " new │ items just right of Quillet's separator (•••) once, so that "
                          "they push with it"
                    : ""),
        "Quillet could not hide your menu bar items",
        "Hiding did not work: " + what +
            ". Quillet shows the hidden items again instead of pretending." +
            (asking ? " Hold Command and drag the " + count +
                          " new │ items just right of Quillet's separator (•••) once; then they "
                          "push with it."
                    : ""));
}

Notice toggleLeftOfSeparator() {
    return askOnce("hosted-toggle-order",
                   "Quillet: its toggle stands left of its separator (•••), so it cannot collapse "
                   "without hiding the toggle; Command-drag the toggle right of ••• once",
                   "Drag Quillet's toggle right of its separator",
                   std::string(kOnlyYou) +
                       "Hold Command and drag Quillet's toggle to the right of ••• once; until "
                       "then Quillet does not collapse, so that the toggle stays in reach.");
}

Notice dragLeftOfSeparator(const std::vector<std::string>& applications) {
    const std::string names = joined(applications);
    return askOnce("hosted-drag:" + names,
                   "Quillet: cannot move menu bar items on this Mac; Command-drag " + names +
                       " left of Quillet's separator (•••) once, and the rule holds from then on",
                   "Drag " + names + " left of Quillet's separator",
                   std::string(kOnlyYou) + "Hold Command and drag " + names +
                       " to the left of ••• once; Quillet hides " + them(applications) +
                       " from then on.");
}

Notice allowInMenuBar(const std::vector<std::string>& applications) {
    const std::string names = joined(applications);
    return {"hosted-always:" + names,
            "Quillet: cannot keep " + names +
                " always hidden on this Mac; turn off “Allow in the Menu Bar” for " +
                them(applications) + " in System Settings › Menu Bar",
            Alert{"Keep " + names + " out of the menu bar in System Settings",
                  "On this Mac Quillet cannot keep items always hidden. System Settings › Menu "
                  "Bar has an “Allow in the Menu Bar” switch for each app: turn it off for " +
                      names + ".",
                  {"Open Menu Bar Settings", "Not Now"}},
            std::string(kMenuBarSettingsURL)};
}

} // namespace quillet::HostedNotices
