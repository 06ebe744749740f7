#pragma once

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
    virtual void present(const Alert& alert) = 0;
};

} // namespace quillet
