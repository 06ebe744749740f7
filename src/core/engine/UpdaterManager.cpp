#include "core/engine/UpdaterManager.hpp"

namespace quillet {

UpdaterManager::UpdaterManager(Updater& controller) : controller_(controller) {
    controller_.start();
}

} // namespace quillet
