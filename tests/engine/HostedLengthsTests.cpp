// The lengths Quillet gives its separators on the hosted menu bar, held against what was
// measured on real Macs (see the macOS 27 notes): every length that was seen to be dropped, and
// the cap of half a display less the chrome.

#include "core/engine/HostedLengths.hpp"

#include <gtest/gtest.h>

namespace quillet {
namespace {

Rect display(double width, double x = 0) {
    return makeRect(x, 0, width, width * 9 / 16);
}

TEST(HostedLengths, StayBelowEveryLengthSeenDropped) {
    // Width of the display, length seen dropped there.
    const std::vector<std::pair<double, double>> dropped{{3840, 1904}, {1800, 884}, {1728, 802}};
    for (const auto& [width, length] : dropped) {
        EXPECT_LT(hostedLengthLimit({display(width)}), length) << width;
    }
}

TEST(HostedLengths, FitTheNarrowestDisplay) {
    const std::vector<Rect> displays{display(5120), display(1024, 5120), display(2560, -2560)};
    EXPECT_EQ(hostedDropThreshold(displays), 1024 / 2 - kHostedItemChrome);
    EXPECT_LT(hostedLengthLimit(displays) + kHostedItemChrome, 1024 / 2.0);
    // Together the separators push the hidden section the widest display's width.
    const std::size_t separators = hostedSeparatorsNeeded(displays);
    EXPECT_GE(static_cast<double>(separators) * hostedSharedLength(displays, separators), 5120);
    EXPECT_LE(hostedSharedLength(displays, separators), hostedLengthLimit(displays));
}

TEST(HostedLengths, ShareShrinksAsSeparatorsAreAddedButNeverPassesTheLimit) {
    const std::vector<Rect> displays{display(1512)};
    EXPECT_EQ(hostedSharedLength(displays, 1), hostedLengthLimit(displays));
    EXPECT_LT(hostedSharedLength(displays, 4), hostedSharedLength(displays, 3));
    EXPECT_EQ(hostedLengthLimit({}), 0);
    EXPECT_EQ(hostedSeparatorsNeeded({}), 1u);
}

} // namespace
} // namespace quillet
