#include "sim/app/SimulatedApplication.hpp"

namespace quillet::sim {

std::optional<std::string> SimulatedLoginItem::registerService() {
    if (refusal_) {
        return refusal_;
    }
    status_ = holdForApproval_ ? kRequiresApproval : kEnabled;
    return std::nullopt;
}

std::optional<std::string> SimulatedLoginItem::unregisterService() {
    if (refusal_) {
        return refusal_;
    }
    status_ = kNotRegistered;
    return std::nullopt;
}

} // namespace quillet::sim
