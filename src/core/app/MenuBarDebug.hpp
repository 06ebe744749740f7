#pragma once

#include "core/menubar/MenuBarItem.hpp"

#include <optional>
#include <string>
#include <vector>

namespace quillet {

class AccessibilityReader;
class ItemEnumerator;
class LogSink;
class ProcessContext;
class ScreenCapture;

// The two one-shot diagnostic modes: a listing of the items as the rest of Quillet treats them,
// and a raw dump of the window server's view with permissions and display geometry. Neither
// reports failure through the exit status; failures are log lines only.
class MenuBarDebug {
public:
    MenuBarDebug(const ItemEnumerator& enumerator, const ScreenCapture& screenCapture,
                 const AccessibilityReader& accessibility, ProcessContext& process, LogSink& log)
        : enumerator_(enumerator), screenCapture_(screenCapture), accessibility_(accessibility),
          process_(process), log_(log) {}

    // Prints the listing to standard output (the caller exits).
    void printItemsAndExit();
    // Writes the raw dump to `path`.
    void dumpRaw(const std::string& path);

    // The documents themselves; nullopt when a coordinate cannot be written as an integer.
    static std::optional<std::string> listingDocument(const std::vector<MenuBarItem>& items);
    struct RawSnapshot {
        std::vector<MenuBarItem> items;
        std::vector<Rect> displays;
        bool screenRecording = false;
        bool accessibility = false;
    };
    static std::optional<std::string> rawDocument(const RawSnapshot& snapshot);

private:
    const ItemEnumerator& enumerator_;
    const ScreenCapture& screenCapture_;
    const AccessibilityReader& accessibility_;
    ProcessContext& process_;
    LogSink& log_;
};

} // namespace quillet
