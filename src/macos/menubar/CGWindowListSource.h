#pragma once

#include "core/ports/WindowListSource.hpp"

namespace quillet::macos {

// The window server's window list (CGWindowListCopyWindowInfo). Each record looks up only the
// keys the core asks for, in the CF dictionary the window server returned, and passes the value
// on as it was typed.
class CGWindowListSource final : public WindowListSource {
public:
    bool visitWindowList(const Visitor& visit) const override;
    bool visitWindowDescription(WindowID window, const Visitor& visit) const override;
};

} // namespace quillet::macos
