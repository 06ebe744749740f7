#include "macos/settings/AppKitSettingsWindowHost.h"

#include "core/settings/SettingsLook.hpp"
#include "macos/settings/SettingsAction.h"
#include "macos/settings/SettingsAppearance.h"
#include "macos/settings/SettingsPageRenderer.h"
#include "macos/support/Strings.h"

#include <vector>

// Tells the C++ side that the user closes the window.
@interface QuilletSettingsWindowDelegate : NSObject <NSWindowDelegate>
- (instancetype)initWithWillClose:(std::function<void()>)willClose;
@end

@implementation QuilletSettingsWindowDelegate {
    std::function<void()> _willClose;
}

- (instancetype)initWithWillClose:(std::function<void()>)willClose {
    if ((self = [super init])) {
        _willClose = std::move(willClose);
    }
    return self;
}

- (void)windowWillClose:(NSNotification*)notification {
    (void)notification;
    if (_willClose) {
        _willClose();
    }
}

@end

// The sidebar's list of panes: one row per entry, a tinted symbol and a title.
@interface QuilletSettingsSidebar : NSObject <NSTableViewDataSource, NSTableViewDelegate>
@property (nonatomic) std::vector<quillet::SettingsSidebarEntry> entries;
// Called with the entry the user selected.
@property (nonatomic) std::function<void(std::size_t)> picked;
// Set while the selection is changed from the content, not by the user.
@property (nonatomic) BOOL updating;
@end

@implementation QuilletSettingsSidebar

- (NSInteger)numberOfRowsInTableView:(NSTableView*)tableView {
    (void)tableView;
    return static_cast<NSInteger>(_entries.size());
}

- (NSView*)tableView:(NSTableView*)tableView
    viewForTableColumn:(NSTableColumn*)tableColumn
                   row:(NSInteger)row {
    (void)tableView;
    (void)tableColumn;
    using namespace quillet::macos::SettingsAppearance;
    const quillet::SettingsSidebarEntry& entry = _entries[static_cast<std::size_t>(row)];
    NSTableCellView* cell = [[NSTableCellView alloc] initWithFrame:NSZeroRect];
    NSImageView* icon = [[NSImageView alloc] initWithFrame:NSZeroRect];
    icon.image = symbol(entry.symbol, 0, NSFontWeightRegular, color(entry.tint));
    NSTextField* title = [NSTextField labelWithString:quillet::macos::nonNilString(entry.title)];
    NSStackView* line =
        stack(NSUserInterfaceLayoutOrientationHorizontal, NSLayoutAttributeCenterY, 6);
    [line addArrangedSubview:icon];
    [line addArrangedSubview:title];
    [cell addSubview:line];
    cell.imageView = icon;
    cell.textField = title;
    [NSLayoutConstraint activateConstraints:@[
        [line.leadingAnchor constraintEqualToAnchor:cell.leadingAnchor],
        [line.trailingAnchor constraintLessThanOrEqualToAnchor:cell.trailingAnchor],
        [line.centerYAnchor constraintEqualToAnchor:cell.centerYAnchor],
    ]];
    return cell;
}

- (void)tableViewSelectionDidChange:(NSNotification*)notification {
    NSTableView* table = notification.object;
    if (!_updating && table.selectedRow >= 0 && _picked) {
        auto picked = _picked;
        picked(static_cast<std::size_t>(table.selectedRow));
    }
}

@end

namespace quillet::macos {

namespace {

namespace Look = SettingsLook;

bool sameEntries(const std::vector<SettingsSidebarEntry>& a,
                 const std::vector<SettingsSidebarEntry>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
        return x.tag == y.tag && x.title == y.title && x.symbol == y.symbol && x.tint == y.tint;
    });
}

class AppKitSettingsWindow final : public SettingsWindow {
public:
    AppKitSettingsWindow(const SettingsWindowStyle& style, std::function<void()> willClose)
        : delegate_([[QuilletSettingsWindowDelegate alloc] initWithWillClose:std::move(willClose)]),
          sidebar_([[QuilletSettingsSidebar alloc] init]) {
        sidebar_.picked = [this](std::size_t index) {
            const auto select = content_.select;
            if (select && index < content_.sidebar.size()) {
                select(content_.sidebar[index].tag);
            }
        };
        NSSplitViewController* split = [[NSSplitViewController alloc] init];
        NSSplitViewItem* list = [NSSplitViewItem sidebarWithViewController:sidebarController()];
        list.minimumThickness = Look::Sidebar::minWidth;
        list.maximumThickness = Look::Sidebar::maxWidth;
        NSViewController* detail = [[NSViewController alloc] init];
        detail.view = page_.view();
        [split addSplitViewItem:list];
        [split addSplitViewItem:[NSSplitViewItem splitViewItemWithViewController:detail]];
        [NSLayoutConstraint activateConstraints:@[
            [split.view.widthAnchor constraintGreaterThanOrEqualToConstant:Look::Content::minWidth],
            [split.view.heightAnchor
                constraintGreaterThanOrEqualToConstant:Look::Content::minHeight],
        ]];

        window_ = [NSWindow windowWithContentViewController:split];
        window_.title = nonNilString(style.title);
        [window_ setStyleMask:static_cast<NSWindowStyleMask>(style.styleMask)];
        [window_ setContentSize:NSMakeSize(style.contentSize.width, style.contentSize.height)];
        window_.minSize = NSMakeSize(style.minSize.width, style.minSize.height);
        window_.releasedWhenClosed = style.releasedWhenClosed ? YES : NO;
        window_.delegate = delegate_;
        window_.titlebarAppearsTransparent = style.titlebarAppearsTransparent ? YES : NO;
        window_.backgroundColor = [NSColor windowBackgroundColor];
        [split.splitView setPosition:Look::Sidebar::idealWidth ofDividerAtIndex:0];
    }

    void setContent(const SettingsWindowContent& content) override {
        content_ = content;
        showSidebar();
        page_.render(content_.detail);
        showAlert();
    }
    Size frameSize() const override {
        return {window_.frame.size.width, window_.frame.size.height};
    }
    void setFrameOrigin(Point origin) override {
        [window_ setFrameOrigin:NSMakePoint(origin.x, origin.y)];
    }
    void makeKeyAndOrderFront() override { [window_ makeKeyAndOrderFront:nil]; }
    void orderFrontRegardless() override { [window_ orderFrontRegardless]; }

private:
    NSViewController* sidebarController() {
        table_ = [[NSTableView alloc] initWithFrame:NSZeroRect];
        table_.style = NSTableViewStyleSourceList;
        table_.headerView = nil;
        [table_ addTableColumn:[[NSTableColumn alloc] initWithIdentifier:@"pane"]];
        table_.dataSource = sidebar_;
        table_.delegate = sidebar_;
        NSScrollView* scroll = [[NSScrollView alloc] initWithFrame:NSZeroRect];
        scroll.documentView = table_;
        scroll.drawsBackground = NO;
        NSViewController* controller = [[NSViewController alloc] init];
        controller.view = scroll;
        return controller;
    }

    void showSidebar() {
        sidebar_.updating = YES;
        if (!sameEntries(sidebar_.entries, content_.sidebar)) {
            sidebar_.entries = content_.sidebar;
            [table_ reloadData];
        }
        for (std::size_t row = 0; row < content_.sidebar.size(); ++row) {
            if (content_.sidebar[row].tag == content_.selectedTag) {
                [table_ selectRowIndexes:[NSIndexSet indexSetWithIndex:row]
                    byExtendingSelection:NO];
            }
        }
        sidebar_.updating = NO;
    }

    // Shows the content's alert as a sheet once; it stays until one of its buttons closes it.
    void showAlert() {
        if (!content_.alert || alert_ != nil) {
            return;
        }
        const SettingsTextAlert& shown = *content_.alert;
        alert_ = [[NSAlert alloc] init];
        alert_.messageText = nonNilString(shown.title);
        alert_.informativeText = nonNilString(shown.message);
        for (const SettingsButton& button : shown.buttons) {
            NSButton* added = [alert_ addButtonWithTitle:nonNilString(button.title)];
            if (button.role == SettingsButton::Role::cancel) {
                added.keyEquivalent = @"\033";
            }
        }
        NSTextField* field = [[NSTextField alloc] initWithFrame:NSMakeRect(0, 0, 240, 24)];
        field.placeholderString = nonNilString(shown.field.placeholder);
        field.stringValue = nonNilString(shown.field.text);
        fieldDelegate_ = [[QuilletSettingsAction alloc] initWithHandler:[this](id sender) {
            const auto setText = content_.alert ? content_.alert->field.setText : nullptr;
            if (auto typed = utf8String(static_cast<NSTextField*>(sender).stringValue);
                setText && typed) {
                setText(*typed);
            }
        }];
        field.delegate = fieldDelegate_;
        alert_.accessoryView = field;
        NSWindow* sheet = alert_.window;
        sheet.initialFirstResponder = field;
        [alert_ beginSheetModalForWindow:window_
                       completionHandler:^(NSModalResponse response) {
                           alert_ = nil;
                           const auto index =
                               static_cast<std::size_t>(response - NSAlertFirstButtonReturn);
                           if (content_.alert && index < content_.alert->buttons.size()) {
                               const auto action = content_.alert->buttons[index].action;
                               if (action) {
                                   action();
                               }
                           }
                       }];
    }

    QuilletSettingsWindowDelegate* delegate_;
    QuilletSettingsSidebar* sidebar_;
    NSTableView* table_ = nil;
    NSWindow* window_ = nil;
    NSAlert* alert_ = nil;
    QuilletSettingsAction* fieldDelegate_ = nil;
    SettingsPageRenderer page_;
    SettingsWindowContent content_;
};

} // namespace

std::shared_ptr<SettingsWindow>
AppKitSettingsWindowHost::createWindow(const SettingsWindowStyle& style,
                                       std::function<void()> willClose) {
    return std::make_shared<AppKitSettingsWindow>(style, std::move(willClose));
}

} // namespace quillet::macos
