#pragma once

#include "core/ports/AlertPresenter.hpp"
#include "core/ports/ApplicationShell.hpp"
#include "core/ports/LoginItem.hpp"
#include "core/ports/Updater.hpp"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillet::sim {

// The application object of the simulated Mac. Since macOS 14 activation is a request the
// system may turn down; `refuseActivation` plays that. Terminating only records the request:
// whoever runs the simulated process ends it.
class SimulatedApplication : public ApplicationShell {
public:
    void setActivationPolicy(ActivationPolicy policy) override { policy_ = policy; }
    std::optional<ActivationPolicy> activationPolicy() const { return policy_; }

    void activateIgnoringOtherApps() override { active_ = active_ || !refuseActivation_; }
    void terminate() override { terminated_ = true; }
    bool isActive() const { return active_; }
    void refuseActivation(bool refuse) { refuseActivation_ = refuse; }
    bool isTerminated() const { return terminated_; }

private:
    std::optional<ActivationPolicy> policy_;
    bool active_ = false;
    bool refuseActivation_ = false;
    bool terminated_ = false;
};

// The main application's login item (SMAppService): registering enables it, unless the system
// refuses with the given description, or accepts it but holds it until the user approves it in
// System Settings (as macOS does after the user turned the item off there).
class SimulatedLoginItem : public LoginItem {
public:
    static constexpr int kNotRegistered = 0;
    static constexpr int kEnabled = 1;
    static constexpr int kRequiresApproval = 2;

    int status() const override { return status_; }
    std::optional<std::string> registerService() override;
    std::optional<std::string> unregisterService() override;

    void refuseWith(std::optional<std::string> description) { refusal_ = std::move(description); }
    void holdForApproval(bool hold) { holdForApproval_ = hold; }

private:
    int status_ = kNotRegistered;
    std::optional<std::string> refusal_;
    bool holdForApproval_ = false;
};

// The update framework: counts starts and checks. A build without it (or without a feed and a
// key) is unavailable.
class SimulatedUpdater : public Updater {
public:
    bool isAvailable() const override { return available_; }
    void start() override { ++starts_; }
    void checkForUpdates() override { ++checks_; }
    int starts() const { return starts_; }
    int checks() const { return checks_; }
    void setAvailable(bool available) { available_ = available; }

private:
    bool available_ = true;
    int starts_ = 0;
    int checks_ = 0;
};

// The alerts shown to the user, in order.
// Alerts stay up until the simulated user picks a button.
class SimulatedAlerts : public AlertPresenter {
public:
    void present(const Alert& alert, std::function<void(std::size_t)> chosen) override {
        shown_.push_back(alert);
        unanswered_.push_back(std::move(chosen));
    }
    const std::vector<Alert>& shown() const { return shown_; }
    // The user picks `button` on the oldest alert still up; false when none is.
    bool choose(std::size_t button) {
        if (unanswered_.empty()) {
            return false;
        }
        auto chosen = std::move(unanswered_.front());
        unanswered_.erase(unanswered_.begin());
        if (chosen) {
            chosen(button);
        }
        return true;
    }

private:
    std::vector<Alert> shown_;
    std::vector<std::function<void(std::size_t)>> unanswered_;
};

} // namespace quillet::sim
