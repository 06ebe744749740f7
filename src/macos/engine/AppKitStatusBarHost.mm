#import "macos/engine/AppKitStatusBarHost.h"

#import "macos/support/Strings.h"

#include <utility>

// Runs a C++ function when a button or a menu item sends its action. Both hold their targets
// weakly, so whoever installs one keeps it alive.
@interface QuilletStatusItemTarget : NSObject
- (instancetype)initWithHandler:(std::function<void()>)handler;
- (void)perform:(id)sender;
@end

@implementation QuilletStatusItemTarget {
    std::function<void()> _handler;
}

- (instancetype)initWithHandler:(std::function<void()>)handler {
    self = [super init];
    if (self != nil) {
        _handler = std::move(handler);
    }
    return self;
}

- (void)perform:(id)sender {
    (void)sender;
    _handler();
}

@end

namespace quillet::macos {

namespace {

NSImage* symbolImage(const SymbolImage& symbol) {
    NSString* name = nsString(symbol.symbolName);
    if (name == nil) {
        return nil;
    }
    NSImage* image = [NSImage imageWithSystemSymbolName:name
                               accessibilityDescription:nsString(symbol.accessibilityDescription)];
    if (image == nil) {
        return nil;
    }
    // configurationWithPointSize:weight: needs a size; no symbol Quillet draws names a weight
    // without one.
    if (symbol.pointSize) {
        const NSFontWeight weight =
            symbol.weight == SymbolWeight::black ? NSFontWeightBlack : NSFontWeightRegular;
        NSImageSymbolConfiguration* configuration =
            [NSImageSymbolConfiguration configurationWithPointSize:*symbol.pointSize weight:weight];
        if (NSImage* configured = [image imageWithSymbolConfiguration:configuration]) {
            image = configured;
        }
    }
    [image setTemplate:symbol.isTemplate ? YES : NO];
    return image;
}

} // namespace

AppKitStatusItem::AppKitStatusItem(NSStatusItem* item, Updater& updater)
    : item_(item), updater_(updater) {}

double AppKitStatusItem::length() const {
    return [item_ length];
}

void AppKitStatusItem::setLength(double length) {
    [item_ setLength:length];
}

std::string AppKitStatusItem::autosaveName() const {
    return utf8String([item_ autosaveName]).value_or(std::string());
}

void AppKitStatusItem::setAutosaveName(const std::string& name) {
    [item_ setAutosaveName:nsString(name)];
}

bool AppKitStatusItem::hasButton() const {
    return [item_ button] != nil;
}

void AppKitStatusItem::setImage(const std::optional<SymbolImage>& image) {
    [[item_ button] setImage:image ? symbolImage(*image) : nil];
}

void AppKitStatusItem::setToolTip(const std::optional<std::string>& toolTip) {
    [[item_ button] setToolTip:toolTip ? nsString(*toolTip) : nil];
}

void AppKitStatusItem::setAction(std::function<void(std::optional<ButtonEvent>)> handler,
                                 std::uint64_t sendActionOnMask) {
    NSStatusBarButton* button = [item_ button];
    if (button == nil) {
        return;
    }
    buttonTarget_ =
        [[QuilletStatusItemTarget alloc] initWithHandler:[handler = std::move(handler)] {
            NSEvent* event = [NSApp currentEvent];
            if (event == nil) {
                handler(std::nullopt);
                return;
            }
            // NSEventType and NSEventModifierFlags carry the window server's numbers.
            handler(ButtonEvent{static_cast<std::uint32_t>([event type]),
                                static_cast<std::uint64_t>([event modifierFlags])});
        }];
    [button setTarget:buttonTarget_];
    [button setAction:@selector(perform:)];
    [button sendActionOn:static_cast<NSEventMask>(sendActionOnMask)];
}

double AppKitStatusItem::buttonHeight() const {
    NSStatusBarButton* button = [item_ button];
    return button == nil ? 0.0 : [button bounds].size.height;
}

std::optional<Rect> AppKitStatusItem::windowFrame() const {
    NSWindow* window = [[item_ button] window];
    if (window == nil) {
        return std::nullopt;
    }
    const NSRect frame = [window frame];
    return makeRect(frame.origin.x, frame.origin.y, frame.size.width, frame.size.height);
}

void AppKitStatusItem::popUpMenu(const std::vector<MenuEntry>& entries, Point location,
                                 std::function<void(const std::string& action)> perform) {
    NSStatusBarButton* button = [item_ button];
    if (button == nil) {
        return;
    }
    NSMenu* menu = [[NSMenu alloc] initWithTitle:@""];
    for (const MenuEntry& entry : entries) {
        if (entry.kind == MenuEntry::Kind::separator) {
            [menu addItem:[NSMenuItem separatorItem]];
        } else {
            [menu addItem:menuItem(entry, perform)];
        }
    }
    [menu popUpMenuPositioningItem:nil atLocation:NSPoint{location.x, location.y} inView:button];
}

NSMenuItem*
AppKitStatusItem::menuItem(const MenuEntry& entry,
                           const std::function<void(const std::string&)>& perform) const {
    NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:nonNilString(entry.title)
                                                  action:nullptr
                                           keyEquivalent:nonNilString(entry.keyEquivalent)];
    [item setState:entry.checked ? NSControlStateValueOn : NSControlStateValueOff];
    std::function<void()> handler;
    switch (entry.target) {
    case MenuEntry::Target::handler:
        handler = [perform, action = entry.action] { perform(action); };
        break;
    case MenuEntry::Target::updater:
        // The update controller's checkForUpdates:, reached through the updater adapter.
        handler = [&updater = updater_] { updater.checkForUpdates(); };
        break;
    case MenuEntry::Target::application:
        // No target: the action travels the responder chain to the application (terminate:).
        [item setAction:NSSelectorFromString(nonNilString(entry.action))];
        return item;
    }
    QuilletStatusItemTarget* target =
        [[QuilletStatusItemTarget alloc] initWithHandler:std::move(handler)];
    [item setTarget:target];
    [item setAction:@selector(perform:)];
    // The item holds its target weakly; as its represented object the target lives as long as
    // the item.
    [item setRepresentedObject:target];
    return item;
}

std::shared_ptr<StatusItem> AppKitStatusBarHost::createStatusItem(double length) {
    return std::make_shared<AppKitStatusItem>(
        [[NSStatusBar systemStatusBar] statusItemWithLength:length], updater_);
}

void AppKitStatusBarHost::removeStatusItem(const std::shared_ptr<StatusItem>& item) {
    // Only items this host made are in the system status bar.
    if (const auto* appKitItem = dynamic_cast<const AppKitStatusItem*>(item.get())) {
        [[NSStatusBar systemStatusBar] removeStatusItem:appKitItem->statusItem()];
    }
}

} // namespace quillet::macos
