#include "core/nav/NavHUD.hpp"

#include "core/nav/KeyboardNavController.hpp"

namespace quillet {

std::string NavHUD::title() const {
    const auto& state = controller.state();
    if (!state || !state->hasFocus()) {
        return std::string(kNoFocusTitle);
    }
    return state->items[static_cast<std::size_t>(state->index)].displayLabel;
}

std::string NavHUD::hint() const {
    return std::string(kKeysHint) + controller.positionLabel();
}

PanelContent NavHUD::body() const {
    return {.cornerRadius = 12,
            .padding = 12,
            .spacing = 6,
            .lines = {{title(), PanelText::Font::headline, false, 1},
                      {hint(), PanelText::Font::smallestCaption, true, 0}}};
}

} // namespace quillet
