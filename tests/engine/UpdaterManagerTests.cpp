#include "core/engine/UpdaterManager.hpp"

#include <gtest/gtest.h>

namespace quillet {
namespace {

class CountingUpdater : public Updater {
public:
    void start() override { ++starts; }
    void checkForUpdates() override {
        EXPECT_EQ(starts, 1) << "checked before the updater was started";
        ++checks;
    }
    int starts = 0;
    int checks = 0;
};

TEST(UpdaterManager, CreatingItStartsTheUpdaterOnceAndHandsOutThatController) {
    CountingUpdater updater;
    UpdaterManager manager(updater);
    EXPECT_EQ(updater.starts, 1);

    manager.controller().checkForUpdates();
    manager.controller().checkForUpdates();
    EXPECT_EQ(updater.starts, 1);
    EXPECT_EQ(updater.checks, 2);
    EXPECT_EQ(&manager.controller(), &updater);
}

} // namespace
} // namespace quillet
