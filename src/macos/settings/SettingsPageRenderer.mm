#include "macos/settings/SettingsPageRenderer.h"

#include "core/settings/SettingsLook.hpp"
#include "macos/settings/SettingsAppearance.h"
#include "macos/support/Strings.h"

#include <cctype>

// The page's document view: flipped, so that a short page sits at the top of the scroll view.
@interface QuilletFlippedView : NSView
@end

@implementation QuilletFlippedView
- (BOOL)isFlipped {
    return YES;
}
@end

namespace quillet::macos {

namespace {

namespace Look = SettingsLook;
using namespace SettingsAppearance;

std::string uppercased(std::string text) {
    for (char& c : text) {
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return text;
}

const SettingsBanner& bannerAt(const SettingsPage& page, std::size_t item) {
    return std::get<SettingsBanner>(page.content[item]);
}

const SettingsCard& cardAt(const SettingsPage& page, std::size_t item) {
    return std::get<SettingsCard>(page.content[item]);
}

// Shows or hides an optional text, keeping its place in the stack.
void setOptionalText(NSTextField* field, const std::optional<std::string>& text) {
    setText(field, text.value_or(""));
    field.hidden = !text.has_value();
}

} // namespace

SettingsPageRenderer::SettingsPageRenderer() : column_(nil), actions_([NSMutableArray array]) {
    scroll_ = [[NSScrollView alloc] initWithFrame:NSZeroRect];
    scroll_.hasVerticalScroller = YES;
    scroll_.drawsBackground = YES;
    scroll_.backgroundColor = [NSColor windowBackgroundColor];
}

SettingsRow SettingsPageRenderer::rowAt(const SettingsPage& page, Path path) {
    const SettingsCardItem& entry = cardAt(page, path.item).content[path.entry];
    if (const auto* toggle = std::get_if<SettingsToggleRow>(&entry)) {
        return toggle->row();
    }
    if (const auto* item = std::get_if<SettingsItemRow>(&entry)) {
        return item->row();
    }
    return std::get<SettingsRow>(entry);
}

SettingsControl SettingsPageRenderer::controlAt(const SettingsPage& page, Path path) {
    return rowAt(page, path).trailing.controls[path.control];
}

QuilletSettingsAction* SettingsPageRenderer::action(std::function<void(id)> handler) {
    QuilletSettingsAction* target =
        [[QuilletSettingsAction alloc] initWithHandler:std::move(handler)];
    [actions_ addObject:target];
    return target;
}

void SettingsPageRenderer::onRender(Refresh refresh) {
    refresh(page_);
    refreshers_.push_back(std::move(refresh));
}

void SettingsPageRenderer::render(const SettingsPage& page) {
    page_ = page;
    const std::string shape = shapeOf(page);
    if (shape == shape_) {
        for (const Refresh& refresh : refreshers_) {
            refresh(page_);
        }
        return;
    }
    shape_ = shape;
    layOut();
}

void SettingsPageRenderer::retire(NSArray* objects) {
    // The control whose action asked for the new layout may be among what is replaced: it and
    // its target go only once that action has returned.
    dispatch_async(dispatch_get_main_queue(), ^{
        (void)objects;
    });
}

void SettingsPageRenderer::layOut() {
    if (kept_ && kept_->title == page_.title && !page_.content.empty() &&
        std::holds_alternative<SettingsSearchBar>(page_.content.front())) {
        layOutBelowSearchBar();
        return;
    }
    // Another page starts from the top; the same page in a new shape (a profile saved, a
    // permission granted) stays where the user had scrolled it.
    const bool samePage = page_.title == laidOutTitle_;
    const NSPoint scrolled = scroll_.contentView.bounds.origin;
    laidOutTitle_ = page_.title;
    kept_.reset();
    refreshers_.clear();
    retire(@[ actions_, scroll_.documentView != nil ? scroll_.documentView : [NSNull null] ]);
    actions_ = [NSMutableArray array];

    column_ = stack(NSUserInterfaceLayoutOrientationVertical, NSLayoutAttributeLeading,
                    Look::Page::spacing);
    NSView* heading = header();
    [column_ addArrangedSubview:heading];
    [column_ setCustomSpacing:Look::Page::spacing + Look::Page::headerBottomPadding
                    afterView:heading];
    for (std::size_t item = 0; item < page_.content.size(); ++item) {
        appendItem(item);
        if (item == 0 && std::holds_alternative<SettingsSearchBar>(page_.content.front())) {
            kept_ = Kept{page_.title, refreshers_.size(), actions_.count};
        }
    }

    QuilletFlippedView* document = [[QuilletFlippedView alloc] initWithFrame:NSZeroRect];
    document.translatesAutoresizingMaskIntoConstraints = NO;
    [document addSubview:column_];
    scroll_.documentView = document;
    NSView* clip = scroll_.contentView;
    const CGFloat padding = Look::Page::padding;
    NSLayoutConstraint* wide = [column_.widthAnchor constraintEqualToAnchor:document.widthAnchor
                                                                   constant:-2 * padding];
    // The column is 560 wide at most, against the leading edge; narrower windows shrink it.
    wide.priority = NSLayoutPriorityDefaultHigh;
    [NSLayoutConstraint activateConstraints:@[
        [document.leadingAnchor constraintEqualToAnchor:clip.leadingAnchor],
        [document.trailingAnchor constraintEqualToAnchor:clip.trailingAnchor],
        [document.topAnchor constraintEqualToAnchor:clip.topAnchor],
        [column_.leadingAnchor constraintEqualToAnchor:document.leadingAnchor constant:padding],
        [column_.topAnchor constraintEqualToAnchor:document.topAnchor constant:padding],
        [column_.bottomAnchor constraintEqualToAnchor:document.bottomAnchor constant:-padding],
        [column_.widthAnchor constraintLessThanOrEqualToConstant:Look::Page::maxWidth],
        wide,
    ]];
    if (samePage) {
        [document layoutSubtreeIfNeeded];
        [scroll_.contentView scrollToPoint:scrolled];
        [scroll_ reflectScrolledClipView:scroll_.contentView];
    }
}

void SettingsPageRenderer::layOutBelowSearchBar() {
    // The heading and the search bar are the column's first two views; the field in the bar
    // keeps the focus, its text and its caret.
    NSArray<NSView*>* views = column_.arrangedSubviews;
    NSArray<NSView*>* below = [views subarrayWithRange:NSMakeRange(2, views.count - 2)];
    for (NSView* view in below) {
        [column_ removeArrangedSubview:view];
        [view removeFromSuperview];
    }
    refreshers_.resize(kept_->refreshers);
    retire(@[ actions_, below ]);
    actions_ = [[actions_ subarrayWithRange:NSMakeRange(0, kept_->actions)] mutableCopy];
    for (const Refresh& refresh : refreshers_) {
        refresh(page_);
    }
    for (std::size_t item = 1; item < page_.content.size(); ++item) {
        appendItem(item);
    }
}

void SettingsPageRenderer::appendItem(std::size_t item) {
    NSView* view = std::visit(
        [&](const auto& shown) -> NSView* {
            using Shown = std::decay_t<decltype(shown)>;
            if constexpr (std::is_same_v<Shown, SettingsBanner>) {
                return banner(item);
            } else if constexpr (std::is_same_v<Shown, SettingsCard>) {
                return card(item);
            } else if constexpr (std::is_same_v<Shown, SettingsSearchBar>) {
                return searchBar(item);
            } else {
                return caption(item);
            }
        },
        page_.content[item]);
    [column_ addArrangedSubview:view];
    fillWidth(column_, view);
}

NSView* SettingsPageRenderer::header() {
    NSStackView* header = stack(NSUserInterfaceLayoutOrientationVertical, NSLayoutAttributeLeading,
                                Look::Page::headerSpacing);
    NSTextField* title =
        SettingsAppearance::label("", roundedBoldFont(Look::Page::titleSize), color(Tint::primary));
    NSTextField* subtitle = wrappingLabel("", font(TextStyle::subheadline, FontWeight::regular),
                                          color(Tint::secondary));
    [header addArrangedSubview:title];
    [header addArrangedSubview:subtitle];
    fillWidth(header, subtitle);
    onRender([title, subtitle](const SettingsPage& page) {
        setText(title, page.title, Look::Page::titleTracking);
        setOptionalText(subtitle, page.subtitle);
    });
    return header;
}

NSView* SettingsPageRenderer::banner(std::size_t item) {
    NSImageView* sign = [[NSImageView alloc] initWithFrame:NSZeroRect];
    sign.translatesAutoresizingMaskIntoConstraints = NO;
    [sign.widthAnchor constraintEqualToConstant:Look::Banner::symbolFrameWidth].active = YES;

    NSStackView* texts = stack(NSUserInterfaceLayoutOrientationVertical, NSLayoutAttributeLeading,
                               Look::Banner::textSpacing);
    NSTextField* title = SettingsAppearance::label(
        "", font(TextStyle::subheadline, FontWeight::semibold), color(Tint::primary));
    NSTextField* message =
        wrappingLabel("", font(TextStyle::caption, FontWeight::regular), color(Tint::secondary));
    [texts addArrangedSubview:title];
    [texts addArrangedSubview:message];

    NSStackView* line = stack(NSUserInterfaceLayoutOrientationHorizontal, NSLayoutAttributeTop,
                              Look::Banner::spacing);
    [line addArrangedSubview:sign];
    [line addArrangedSubview:texts];
    [line setCustomSpacing:Look::Banner::minimumGap afterView:texts];

    const SettingsBanner& shown = bannerAt(page_, item);
    NSButton* button = nil;
    if (shown.hasButton()) {
        button = [NSButton buttonWithTitle:@""
                                    target:action([this, item](id) {
                                        const auto action = bannerAt(page_, item).action;
                                        action();
                                    })
                                    action:@selector(perform:)];
        button.bezelStyle = NSBezelStyleRounded;
        button.controlSize = NSControlSizeSmall;
        [line addArrangedSubview:button];
    }
    // The kind is part of the shape: its colours are fixed for this layout.
    NSColor* tint = color(SettingsBanner::tint(shown.kind));
    sign.image = symbol(SettingsBanner::symbol(shown.kind), Look::Banner::symbolSize,
                        NSFontWeightSemibold, tint);
    onRender([item, title, message, button](const SettingsPage& page) {
        const SettingsBanner& banner = bannerAt(page, item);
        setText(title, banner.title);
        setOptionalText(message, banner.message);
        if (button != nil) {
            button.title = nonNilString(*banner.actionTitle);
        }
    });
    const CGFloat inset = Look::Banner::padding;
    return roundedBox(line, NSEdgeInsetsMake(inset, inset, inset, inset),
                      Look::Banner::cornerRadius,
                      [tint colorWithAlphaComponent:Look::Banner::fillOpacity],
                      [tint colorWithAlphaComponent:Look::Banner::strokeOpacity])
        .view;
}

NSView* SettingsPageRenderer::card(std::size_t item) {
    const SettingsCard& shown = cardAt(page_, item);
    NSStackView* card =
        stack(NSUserInterfaceLayoutOrientationVertical, NSLayoutAttributeLeading, 0);
    NSTextField* title = SettingsAppearance::label(
        "", font(TextStyle::subheadline, FontWeight::semibold), color(Tint::secondary));
    NSTextField* footer =
        wrappingLabel("", font(TextStyle::caption, FontWeight::regular), color(Tint::tertiary));
    const CGFloat side = Look::Card::titleSidePadding;
    if (shown.title) {
        [card addArrangedSubview:padded(title, NSEdgeInsetsMake(
                                                   0, side, Look::Card::titleBottomPadding, side))];
    }

    NSStackView* rows =
        stack(NSUserInterfaceLayoutOrientationVertical, NSLayoutAttributeLeading, 0);
    for (std::size_t entry = 0; entry < shown.content.size(); ++entry) {
        NSView* view = std::holds_alternative<SettingsRowDivider>(shown.content[entry])
                           ? divider()
                           : row({item, entry, 0});
        [rows addArrangedSubview:view];
        fillWidth(rows, view);
    }
    NSView* body =
        roundedBox(rows, NSEdgeInsetsMake(0, 0, 0, 0), Look::Card::cornerRadius,
                   [NSColor controlBackgroundColor],
                   [[NSColor labelColor] colorWithAlphaComponent:Look::Card::strokeOpacity])
            .view;
    [card addArrangedSubview:body];
    fillWidth(card, body);

    if (shown.footer) {
        NSView* padding = padded(footer, NSEdgeInsetsMake(Look::Card::footerTopPadding,
                                                          Look::Card::footerSidePadding, 0,
                                                          Look::Card::footerSidePadding));
        [card addArrangedSubview:padding];
        fillWidth(card, padding);
    }
    onRender([item, title, footer](const SettingsPage& page) {
        const SettingsCard& card = cardAt(page, item);
        setText(title, uppercased(card.title.value_or("")), Look::Card::titleTracking);
        setText(footer, card.footer.value_or(""));
    });
    return card;
}

NSView* SettingsPageRenderer::row(Path path) {
    // A menu bar item's row: its picture, a name on one line and where it comes from cut in
    // the middle, so that both ends of a long bundle identifier show.
    const bool isItem =
        std::holds_alternative<SettingsItemRow>(cardAt(page_, path.item).content[path.entry]);
    NSStackView* texts = stack(NSUserInterfaceLayoutOrientationVertical, NSLayoutAttributeLeading,
                               Look::Row::textSpacing);
    NSTextField* title = SettingsAppearance::label("", font(TextStyle::body, FontWeight::medium),
                                                   color(Tint::primary));
    NSFont* captionFont = font(TextStyle::caption, FontWeight::regular);
    NSTextField* subtitle = isItem
                                ? SettingsAppearance::label("", captionFont, color(Tint::secondary))
                                : wrappingLabel("", captionFont, color(Tint::secondary));
    if (isItem) {
        title.lineBreakMode = NSLineBreakByTruncatingTail;
        subtitle.lineBreakMode = NSLineBreakByTruncatingMiddle;
        for (NSTextField* field in @[ title, subtitle ]) {
            [field setContentCompressionResistancePriority:NSLayoutPriorityDefaultLow
                                            forOrientation:NSLayoutConstraintOrientationHorizontal];
        }
    }
    [texts addArrangedSubview:title];
    [texts addArrangedSubview:subtitle];

    NSStackView* trailing = stack(NSUserInterfaceLayoutOrientationHorizontal,
                                  NSLayoutAttributeCenterY, rowAt(page_, path).trailing.spacing);
    const std::size_t controls = rowAt(page_, path).trailing.controls.size();
    for (std::size_t index = 0; index < controls; ++index) {
        [trailing addArrangedSubview:control({path.item, path.entry, index})];
    }
    [trailing setContentHuggingPriority:NSLayoutPriorityRequired
                         forOrientation:NSLayoutConstraintOrientationHorizontal];

    NSStackView* line = stack(NSUserInterfaceLayoutOrientationHorizontal, NSLayoutAttributeCenterY,
                              Look::Row::spacing);
    const double vertical = isItem ? Look::ItemRow::verticalPadding : Look::Row::verticalPadding;
    line.edgeInsets =
        NSEdgeInsetsMake(vertical, Look::Row::sidePadding, vertical, Look::Row::sidePadding);
    [line addArrangedSubview:isItem ? itemPicture(path) : iconWell(path)];
    [line addArrangedSubview:texts];
    // The spacer: the text takes what the controls leave, at least 12 points away from them.
    [line setCustomSpacing:Look::Row::minimumGap afterView:texts];
    [texts setContentHuggingPriority:NSLayoutPriorityDefaultLow
                      forOrientation:NSLayoutConstraintOrientationHorizontal];
    [line addArrangedSubview:trailing];
    onRender([path, title, subtitle](const SettingsPage& page) {
        const SettingsRow row = rowAt(page, path);
        setText(title, row.title);
        setOptionalText(subtitle, row.subtitle);
    });
    return line;
}

NSView* SettingsPageRenderer::iconWell(Path path) {
    NSImageView* image = [[NSImageView alloc] initWithFrame:NSZeroRect];
    const CGFloat side = Look::IconWell::side;
    const Rounded well = roundedBox(image, NSEdgeInsetsMake(0, 0, 0, 0),
                                    Look::IconWell::cornerRadius, [NSColor clearColor], nil);
    [NSLayoutConstraint activateConstraints:@[
        [well.view.widthAnchor constraintEqualToConstant:side],
        [well.view.heightAnchor constraintEqualToConstant:side],
    ]];
    NSBox* shape = well.shape;
    onRender([path, image, shape](const SettingsPage& page) {
        const SettingsIconWell icon = rowAt(page, path).iconWell();
        NSColor* tint = color(icon.tint);
        shape.fillColor = [tint colorWithAlphaComponent:Look::IconWell::fillOpacity];
        image.image =
            symbol(icon.systemName, Look::IconWell::symbolSize, NSFontWeightSemibold, tint);
    });
    return well.view;
}

NSView* SettingsPageRenderer::divider() {
    NSBox* line = [[NSBox alloc] initWithFrame:NSZeroRect];
    line.boxType = NSBoxSeparator;
    line.alphaValue = Look::Divider::opacity;
    return padded(line, NSEdgeInsetsMake(0, Look::Divider::leadingIndent, 0, 0));
}

} // namespace quillet::macos
