// Window descriptions as the window server might hand them over, every value of any type (bounds
// that are strings, dictionaries within dictionaries, numbers that are not numbers), read by the
// item enumerator into items and written into both diagnostic documents.
#include "core/menubar/WindowValueReading.hpp"
#include "sim/SimulatedMac.hpp"

#include "FuzzSupport.hpp"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <limits>
#include <string>

using namespace quillet;

namespace {

// The window server nests a dictionary only for the bounds; a little deeper covers the rest.
constexpr int kDictionaryDepth = 3;

double number(FuzzedDataProvider& input) {
    switch (input.ConsumeIntegralInRange(0, 4)) {
    case 0:
        return std::numeric_limits<double>::quiet_NaN();
    case 1:
        return input.ConsumeBool() ? std::numeric_limits<double>::infinity()
                                   : -std::numeric_limits<double>::infinity();
    case 2:
        return input.ConsumeFloatingPoint<double>();
    default:
        return input.ConsumeFloatingPointInRange<double>(-3000, 3000);
    }
}

std::string name(FuzzedDataProvider& input) {
    static const char* const names[] = {"X",
                                        "Y",
                                        "Width",
                                        "Height",
                                        "Item-0",
                                        "Clock",
                                        "com.example.app",
                                        "Control Center",
                                        "quillet.toggle"};
    return input.ConsumeBool() ? names[input.ConsumeIntegralInRange<std::size_t>(0, 8)]
                               : input.ConsumeRandomLengthString(24);
}

WindowValue value(FuzzedDataProvider& input, int depth) {
    switch (input.ConsumeIntegralInRange(0, depth > 0 ? 7 : 6)) {
    case 0:
        return {};
    case 1:
        return {input.ConsumeBool()};
    case 2:
        return {input.ConsumeIntegral<std::int64_t>()};
    case 3:
        return {input.ConsumeIntegralInRange<std::int64_t>(-2, 30)};
    case 4:
        return {number(input)};
    case 5:
        return {name(input)};
    case 6:
        return {WindowValue::Unsupported{}};
    default: {
        WindowValue::Dictionary members;
        for (int n = input.ConsumeIntegralInRange(0, 5); n > 0; --n) {
            std::string key = name(input);
            members.push_back({std::move(key), value(input, depth - 1)});
        }
        return {std::move(members)};
    }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    sim::SimulatedMac mac;
    std::vector<Rect> displays;
    for (int n = input.ConsumeIntegralInRange(0, 3); n > 0; --n) {
        displays.push_back(makeRect(number(input), number(input), number(input), number(input)));
    }
    mac.setDisplays(std::move(displays));
    for (int n = input.ConsumeIntegralInRange(0, 3); n > 0; --n) {
        mac.installApplication(name(input), "/Applications/" + name(input) + ".app");
    }
    mac.setAccessibilityTrusted(input.ConsumeBool());
    const Pid ownPID = input.ConsumeIntegral<Pid>();
    while (input.remaining_bytes() > 0) {
        sim::SimulatedMac::Window window;
        for (WindowValue& entry : window.values) {
            entry = value(input, kDictionaryDepth);
        }
        readRect(window[WindowKey::bounds]);
        mac.addWindow(std::move(window));
    }

    fuzz::readItems(mac, ownPID);
    return 0;
}
