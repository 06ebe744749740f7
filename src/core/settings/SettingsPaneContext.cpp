#include "core/settings/SettingsPaneContext.hpp"

#include "core/ports/AccessibilityReader.hpp"
#include "core/ports/ScreenCapture.hpp"

namespace quillet {

PermissionGrants PermissionGrants::read(const SettingsPaneContext& context) {
    return {context.accessibility.isTrusted(false), context.screenCapture.preflight()};
}

} // namespace quillet
