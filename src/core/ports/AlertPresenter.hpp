#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace quillet {

// A modal alert as data: the core writes every word of it, the platform only shows it.
struct Alert {
    std::string messageText;
    std::string informativeText;
    // Left to right as the user reads them; the first is the default button.
    std::vector<std::string> buttons;
    friend bool operator==(const Alert&, const Alert&) = default;
};

// Shows alerts to the user (NSAlert on a Mac).
class AlertPresenter {
public:
    virtual ~AlertPresenter() = default;
    // Shows `alert`; `chosen`, when given, learns which button the user picked (its index in
    // `buttons`). The alert may open after the caller has returned, so the caller is never
    // re-entered while the alert is up.
    virtual void present(const Alert& alert, std::function<void(std::size_t)> chosen) = 0;
};

} // namespace quillet
