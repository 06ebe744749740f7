#include "core/triggers/HotKeyManager.hpp"
#include "sim/triggers/SimulatedHotKeys.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace quillet {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::uint32_t kKeyB = 11;
constexpr std::uint32_t kCommandShift = 768;
constexpr std::uint32_t kCommandOption = 2304;

// Changing the combination and releasing it at quit run end to end in the application delegate's
// tests.
class HotKeyManagerTest : public ::testing::Test {
protected:
    sim::SimulatedHotKeys hotKeys;
    int triggers = 0;
    std::unique_ptr<HotKeyManager> manager =
        std::make_unique<HotKeyManager>(hotKeys, [this] { ++triggers; });
};

TEST_F(HotKeyManagerTest, EachPressOfTheRegisteredCombinationTriggersOnce) {
    manager->registerHotKey(kKeyB, kCommandShift);
    EXPECT_THAT(hotKeys.requestedIDs(), ElementsAre(HotKeyID{0x514C484B, 1})); // "QLHK", 1
    EXPECT_THAT(hotKeys.press(kKeyB, kCommandShift), ElementsAre(0));
    hotKeys.press(kKeyB, kCommandShift);
    EXPECT_EQ(triggers, 2);
    EXPECT_THAT(hotKeys.press(kKeyB, kCommandOption), IsEmpty());
}

TEST_F(HotKeyManagerTest, ACombinationHeldElsewhereSilentlyDoesNothingUntilAnotherIsChosen) {
    hotKeys.claimByAnotherApplication(kKeyB, kCommandShift);
    manager->registerHotKey(kKeyB, kCommandShift);
    EXPECT_FALSE(manager->hotKeyRef());
    EXPECT_TRUE(manager->handlerRef());
    manager->registerHotKey(kKeyB, kCommandOption);
    hotKeys.press(kKeyB, kCommandOption);
    EXPECT_EQ(triggers, 1);
}

TEST_F(HotKeyManagerTest, APressAfterTheManagerIsGoneIsNotHandled) {
    manager->registerHotKey(kKeyB, kCommandShift);
    manager.reset();
    EXPECT_THAT(hotKeys.press(kKeyB, kCommandShift), ElementsAre(-9874));
    EXPECT_EQ(triggers, 0);
}

} // namespace
} // namespace quillet
