#include "macos/settings/SettingsPageRenderer.h"

#include "core/settings/SettingsLook.hpp"
#include "macos/settings/SettingsAppearance.h"
#include "macos/support/AppKitImage.h"
#include "macos/support/Strings.h"

namespace quillet::macos {

namespace {

namespace Look = SettingsLook;
using namespace SettingsAppearance;

const SettingsSearchBar& searchBarAt(const SettingsPage& page, std::size_t item) {
    return std::get<SettingsSearchBar>(page.content[item]);
}

// What the bar's buttons show: they are made again only when this changes.
std::string buttonsShown(const SettingsSearchBar& bar) {
    std::string shown;
    for (const SettingsButton& button : bar.buttons) {
        shown += button.symbol + "\n" + button.title + "\n" + button.toolTip + "\n";
    }
    return shown;
}

NSImage* nsImage(const ImageRef& image) {
    const auto* appKit = dynamic_cast<const AppKitImage*>(image.get());
    return appKit != nullptr ? appKit->image() : nil;
}

} // namespace

NSView* SettingsPageRenderer::searchBar(std::size_t item) {
    NSImageView* glass = [[NSImageView alloc] initWithFrame:NSZeroRect];
    glass.image =
        symbol(searchBarAt(page_, item).symbol, 0, NSFontWeightRegular, color(Tint::secondary));
    NSTextField* field = [[NSTextField alloc] initWithFrame:NSZeroRect];
    field.bezeled = NO;
    field.drawsBackground = NO;
    field.focusRingType = NSFocusRingTypeNone;
    field.delegate = action([this, item](id sender) {
        const auto setText = searchBarAt(page_, item).field.setText;
        if (auto typed = utf8String(static_cast<NSTextField*>(sender).stringValue);
            setText && typed) {
            setText(*typed);
        }
    });
    [field setContentHuggingPriority:NSLayoutPriorityDefaultLow
                      forOrientation:NSLayoutConstraintOrientationHorizontal];
    NSStackView* buttons = stack(NSUserInterfaceLayoutOrientationHorizontal,
                                 NSLayoutAttributeCenterY, Look::SearchBar::spacing);
    NSStackView* line = stack(NSUserInterfaceLayoutOrientationHorizontal, NSLayoutAttributeCenterY,
                              Look::SearchBar::spacing);
    [line addArrangedSubview:glass];
    [line addArrangedSubview:field];
    [line addArrangedSubview:buttons];

    NSMutableArray* targets = [NSMutableArray array];
    auto shownButtons = std::make_shared<std::optional<std::string>>();
    onRender([this, item, field, buttons, targets, shownButtons](const SettingsPage& page) {
        const SettingsSearchBar& bar = searchBarAt(page, item);
        field.placeholderString = nonNilString(bar.field.placeholder);
        // While the user types, the field already shows the text: setting it again would move
        // the caret. Only a change from elsewhere (the clear button) is written back.
        NSString* text = nonNilString(bar.field.text);
        if (![field.stringValue isEqualToString:text]) {
            field.stringValue = text;
        }
        if (const std::string shown = buttonsShown(bar); *shownButtons != shown) {
            *shownButtons = shown;
            showSearchButtons(buttons, item, targets);
        }
    });
    const CGFloat side = Look::SearchBar::sidePadding;
    const CGFloat vertical = Look::SearchBar::verticalPadding;
    return roundedBox(line, NSEdgeInsetsMake(vertical, side, vertical, side),
                      Look::SearchBar::cornerRadius, [NSColor controlBackgroundColor],
                      [[NSColor labelColor] colorWithAlphaComponent:Look::SearchBar::strokeOpacity])
        .view;
}

void SettingsPageRenderer::showSearchButtons(NSStackView* buttons, std::size_t item,
                                             NSMutableArray* targets) {
    NSArray<NSView*>* old = buttons.arrangedSubviews;
    retire(@[ [targets copy], old ]);
    [targets removeAllObjects];
    for (NSView* view in old) {
        [buttons removeArrangedSubview:view];
        [view removeFromSuperview];
    }
    const std::vector<SettingsButton>& shown = searchBarAt(page_, item).buttons;
    for (std::size_t index = 0; index < shown.size(); ++index) {
        QuilletSettingsAction* target =
            [[QuilletSettingsAction alloc] initWithHandler:[this, item, index](id) {
                const auto& current = searchBarAt(page_, item).buttons;
                if (index < current.size() && current[index].action) {
                    const auto action = current[index].action;
                    action();
                }
            }];
        [targets addObject:target];
        NSButton* button = SettingsAppearance::button(shown[index], target);
        // Plain and borderless buttons alike draw no bezel here.
        button.bordered = NO;
        button.toolTip = shown[index].toolTip.empty() ? nil : nsString(shown[index].toolTip);
        [buttons addArrangedSubview:button];
    }
}

NSView* SettingsPageRenderer::caption(std::size_t item) {
    NSTextField* text = SettingsAppearance::label("", font(TextStyle::caption, FontWeight::regular),
                                                  color(Tint::secondary));
    onRender([item, text](const SettingsPage& page) {
        setText(text, std::get<SettingsCaption>(page.content[item]).text);
    });
    const CGFloat side = Look::Caption::sidePadding;
    return padded(text, NSEdgeInsetsMake(0, side, 0, side));
}

NSView* SettingsPageRenderer::itemPicture(Path path) {
    const auto pictureAt = [path](const SettingsPage& page) {
        const auto& card = std::get<SettingsCard>(page.content[path.item]);
        return std::get<SettingsItemRow>(card.content[path.entry]).picture;
    };
    // The kind is part of the page's shape: a snapshot keeps its dark plate for this layout.
    const bool snapshot = pictureAt(page_).kind == SettingsItemPicture::Kind::snapshot;
    NSImageView* image = [[NSImageView alloc] initWithFrame:NSZeroRect];
    image.imageScaling = NSImageScaleProportionallyUpOrDown;
    const CGFloat inset = snapshot ? Look::ItemRow::snapshotPadding : 0;
    const Rounded plate = roundedBox(
        image, NSEdgeInsetsMake(inset, inset, inset, inset), Look::ItemRow::snapshotCornerRadius,
        snapshot
            ? [[NSColor blackColor] colorWithAlphaComponent:Look::ItemRow::snapshotPlateOpacity]
            : [NSColor clearColor],
        nil);
    const CGFloat centred = (Look::IconWell::side - Look::ItemRow::pictureSide) / 2;
    const Rounded well = roundedBox(
        plate.view, NSEdgeInsetsMake(centred, centred, centred, centred),
        Look::IconWell::cornerRadius,
        [[NSColor labelColor] colorWithAlphaComponent:Look::ItemRow::wellFillOpacity], nil);
    [NSLayoutConstraint activateConstraints:@[
        [plate.view.widthAnchor constraintEqualToConstant:Look::ItemRow::pictureSide],
        [plate.view.heightAnchor constraintEqualToConstant:Look::ItemRow::pictureSide],
    ]];
    onRender([pictureAt, image](const SettingsPage& page) {
        const SettingsItemPicture picture = pictureAt(page);
        image.image = picture.kind == SettingsItemPicture::Kind::symbol
                          ? symbol(picture.symbol, Look::ItemRow::symbolSize, NSFontWeightSemibold,
                                   color(Tint::secondary))
                          : nsImage(picture.image);
    });
    return well.view;
}

} // namespace quillet::macos
