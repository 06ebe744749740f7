#pragma once

#include "core/menubar/HostedItemEnumerator.hpp"
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
// and a raw dump of the window server's view with permissions and display geometry. On the hosted
// bar of macOS 27 both read the host's accessibility tree instead, in documents of the same shape
// that say so ("source": "accessibility"). Neither reports failure through the exit status;
// failures are log lines only.
class MenuBarDebug {
public:
    MenuBarDebug(const ItemEnumerator& enumerator, const HostedItemEnumerator& hosted,
                 const ScreenCapture& screenCapture, const AccessibilityReader& accessibility,
                 ProcessContext& process, LogSink& log)
        : enumerator_(enumerator), hosted_(hosted), screenCapture_(screenCapture),
          accessibility_(accessibility), process_(process), log_(log) {}

    // Prints the listing to standard output (the caller exits).
    void printItemsAndExit();
    // Writes the raw dump to `path`.
    void dumpRaw(const std::string& path);

    // The documents themselves; nullopt when a coordinate cannot be written as an integer.
    static std::optional<std::string> listingDocument(const std::vector<MenuBarItem>& items);
    template <class Item> struct Snapshot {
        std::vector<Item> items;
        std::vector<Rect> displays;
        bool screenRecording = false;
        bool accessibility = false;
    };
    using RawSnapshot = Snapshot<MenuBarItem>;
    static std::optional<std::string> rawDocument(const RawSnapshot& snapshot);
    // The same of the hosted bar (MenuBarDebug+Hosted.cpp).
    static std::optional<std::string>
    hostedListingDocument(const std::vector<HostedMenuBarItem>& items);
    using HostedRawSnapshot = Snapshot<HostedMenuBarItem>;
    static std::optional<std::string> hostedRawDocument(const HostedRawSnapshot& snapshot);

private:
    bool onHostedBar() const;
    // The host's slots; an empty list, with a line logged, when the tree cannot be read.
    std::vector<HostedMenuBarItem> hostedItems() const;
    void printHostedItems();
    std::optional<std::string> hostedRawDump();

    const ItemEnumerator& enumerator_;
    const HostedItemEnumerator& hosted_;
    const ScreenCapture& screenCapture_;
    const AccessibilityReader& accessibility_;
    ProcessContext& process_;
    LogSink& log_;
};

} // namespace quillet
