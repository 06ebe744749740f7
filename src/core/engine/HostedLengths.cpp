#include "core/engine/HostedLengths.hpp"

#include <algorithm>
#include <cmath>

namespace quillet {

namespace {

double narrowest(const std::vector<Rect>& displays) {
    if (displays.empty()) {
        return 0;
    }
    return std::ranges::min(displays, {}, &Rect::width).width();
}

double widest(const std::vector<Rect>& displays) {
    if (displays.empty()) {
        return 0;
    }
    return std::ranges::max(displays, {}, &Rect::width).width();
}

} // namespace

double hostedDropThreshold(const std::vector<Rect>& displays) {
    return std::max(0.0, narrowest(displays) / 2 - kHostedItemChrome);
}

double hostedLengthLimit(const std::vector<Rect>& displays) {
    return std::max(0.0, hostedDropThreshold(displays) - kHostedSafetyMargin);
}

std::size_t hostedSeparatorsNeeded(const std::vector<Rect>& displays) {
    const double limit = hostedLengthLimit(displays);
    if (limit <= 0) {
        return 1;
    }
    return std::max<std::size_t>(1, static_cast<std::size_t>(std::ceil(widest(displays) / limit)));
}

double hostedSharedLength(const std::vector<Rect>& displays, std::size_t separators) {
    const double share =
        widest(displays) / static_cast<double>(std::max<std::size_t>(1, separators));
    return std::min(hostedLengthLimit(displays), std::ceil(share));
}

} // namespace quillet
