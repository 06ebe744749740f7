#pragma once

#include "core/ports/Geometry.hpp"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace quillet {

struct WindowValueMember;

// One value of a window description, typed as the window server typed it. The core decides how
// strictly to read it (a layer that arrives as a string is not a layer), so the adapters pass
// values through without interpreting them.
struct WindowValue {
    struct Unsupported {
        friend bool operator==(const Unsupported&, const Unsupported&) = default;
    };
    using Dictionary = std::vector<WindowValueMember>;

    std::variant<std::monostate, bool, std::int64_t, double, std::string, Dictionary, Unsupported>
        content;

    bool isAbsent() const { return std::holds_alternative<std::monostate>(content); }
    // Defined once the type is complete: comparing a dictionary compares WindowValues.
    friend bool operator==(const WindowValue&, const WindowValue&);
};

// One named member of a dictionary value.
struct WindowValueMember {
    std::string name;
    WindowValue value;
};

inline bool operator==(const WindowValueMember& a, const WindowValueMember& b) {
    return a.name == b.name && a.value == b.value;
}

inline bool operator==(const WindowValue& a, const WindowValue& b) {
    return a.content == b.content;
}

// The keys of a window description that Quillet reads (the kCGWindow… keys).
enum class WindowKey { layer, bounds, ownerPID, number, ownerName, name };

// One entry of the window list, read key by key: an item costs a string only once its layer and
// bounds have qualified it.
class WindowRecord {
public:
    virtual ~WindowRecord() = default;
    virtual WindowValue value(WindowKey key) const = 0;
};

// The window server's list of windows (CGWindowListCopyWindowInfo). Records are handed to a
// visitor rather than returned, so that reading a window list allocates nothing per window.
class WindowListSource {
public:
    using Visitor = std::function<void(const WindowRecord&)>;

    virtual ~WindowListSource() = default;

    // Every window except desktop elements, in the window server's order. False when the list
    // cannot be had at all.
    virtual bool visitWindowList(const Visitor& visit) const = 0;

    // The description of exactly one window (no record when it is gone). False when the list
    // cannot be had at all.
    virtual bool visitWindowDescription(WindowID window, const Visitor& visit) const = 0;
};

} // namespace quillet
