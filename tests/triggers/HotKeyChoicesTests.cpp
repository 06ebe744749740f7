#include "core/prefs/AppPreferences.hpp"
#include "core/prefs/HotKeyOption.hpp"
#include "sim/app/SimulatedQuillet.hpp"
#include "sim/prefs/MemoryKeyValueStore.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace quillet {
namespace {

// The keys a user presses for a combination as the picker shows it ("⌘⇧M"), as Carbon's hot key
// service receives them: modifier bits and the ANSI layout's key codes from Events.h.
struct Keys {
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;
};

Keys keysShownAs(std::string_view title) {
    Keys keys;
    for (auto [symbol, bit] : {std::pair<std::string_view, std::uint32_t>{"⌘", 256},
                               {"⇧", 512},
                               {"⌥", 2048},
                               {"⌃", 4096}}) {
        if (title.find(symbol) != std::string_view::npos) {
            keys.modifiers |= bit;
        }
    }
    keys.keyCode = title.ends_with("B") ? 0x0B : title.ends_with("M") ? 0x2E : 0xFFFF;
    return keys;
}

const sim::SimulatedMac::Application kDropbox{"com.getdropbox.dropbox", "Dropbox", 701};

// Quillet launched on stored defaults, with Dropbox's item in the hidden zone.
struct LaunchedQuillet {
    explicit LaunchedQuillet(KeyValueStore& defaults) : quillet({"Quillet"}, &defaults) {
        dropbox = quillet.world.mac.addApplicationItem(kDropbox, kDropbox.bundleID, 28);
        preferences().setSectionByBundleID({{kDropbox.bundleID, MenuBarSection::hidden}});
        quillet.delegate.applicationDidFinishLaunching();
        quillet.world.scheduler.runUntilIdle();
    }

    AppPreferences& preferences() { return quillet.services.preferences(); }
    bool dropboxShown() { return quillet.world.mac.statusItemFrame(dropbox)->maxX() > 0; }
    void press(Keys keys) { quillet.world.hotKeys.press(keys.keyCode, keys.modifiers); }

    sim::SimulatedQuillet quillet;
    WindowID dropbox = 0;
};

TEST(HotKeyChoices, EachChoiceTogglesTheHiddenItemsWhenItsKeysArePressedAndAfterARelaunch) {
    sim::MemoryKeyValueStore defaults;
    std::optional<Keys> previous;
    for (HotKeyOption option : allHotKeyOptions) {
        SCOPED_TRACE(std::string(title(option)));
        const Keys keys = keysShownAs(title(option));
        {
            LaunchedQuillet quillet(defaults);
            quillet.preferences().setHotKey(option);
            if (previous) {
                quillet.press(*previous); // the last choice no longer does anything
                EXPECT_FALSE(quillet.dropboxShown());
            }
            quillet.press(keys);
            EXPECT_TRUE(quillet.dropboxShown());
            quillet.press(keys);
            EXPECT_FALSE(quillet.dropboxShown());
        }
        LaunchedQuillet relaunched(defaults);
        relaunched.press(keys);
        EXPECT_TRUE(relaunched.dropboxShown());
        previous = keys;
    }
}

} // namespace
} // namespace quillet
