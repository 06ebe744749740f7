#include "macos/settings/SettingsPageRenderer.h"

#include "core/settings/SettingsLook.hpp"
#include "macos/settings/SettingsAppearance.h"
#include "macos/support/Strings.h"

namespace quillet::macos {

namespace {

namespace Look = SettingsLook;
using namespace SettingsAppearance;

template <class Control> Control as(const SettingsControl& control) {
    return std::get<Control>(control);
}

NSInteger indexOf(const std::vector<SettingsChoice>& choices, const std::string& tag) {
    for (std::size_t index = 0; index < choices.size(); ++index) {
        if (choices[index].tag == tag) {
            return static_cast<NSInteger>(index);
        }
    }
    return -1;
}

} // namespace

NSView* SettingsPageRenderer::control(Path path) {
    return std::visit(
        [&](const auto& shown) -> NSView* {
            using Shown = std::decay_t<decltype(shown)>;
            if constexpr (std::is_same_v<Shown, SettingsLabel>) {
                return label(path);
            } else if constexpr (std::is_same_v<Shown, SettingsSwitch>) {
                return toggle(path);
            } else if constexpr (std::is_same_v<Shown, SettingsStepper>) {
                return stepper(path);
            } else if constexpr (std::is_same_v<Shown, SettingsPopUp>) {
                return popUp(path);
            } else if constexpr (std::is_same_v<Shown, SettingsSegmentedPicker>) {
                return segmentedPicker(path);
            } else if constexpr (std::is_same_v<Shown, SettingsButton>) {
                return button(path);
            } else if constexpr (std::is_same_v<Shown, SettingsSearchField>) {
                return textField(path);
            } else {
                return badge(path);
            }
        },
        controlAt(page_, path));
}

NSView* SettingsPageRenderer::label(Path path) {
    NSTextField* field = [NSTextField labelWithString:@""];
    onRender([path, field](const SettingsPage& page) {
        const auto shown = as<SettingsLabel>(controlAt(page, path));
        field.font = font(shown.style, shown.weight);
        field.textColor = color(shown.tint);
        setText(field, shown.text);
    });
    return field;
}

NSView* SettingsPageRenderer::toggle(Path path) {
    NSSwitch* toggle = [[NSSwitch alloc] initWithFrame:NSZeroRect];
    toggle.target = action([this, path](id sender) {
        const auto setOn = as<SettingsSwitch>(controlAt(page_, path)).setOn;
        if (setOn) {
            setOn(static_cast<NSSwitch*>(sender).state == NSControlStateValueOn);
        }
    });
    toggle.action = @selector(perform:);
    onRender([path, toggle](const SettingsPage& page) {
        toggle.state = as<SettingsSwitch>(controlAt(page, path)).isOn ? NSControlStateValueOn
                                                                      : NSControlStateValueOff;
    });
    return toggle;
}

NSView* SettingsPageRenderer::stepper(Path path) {
    NSStepper* stepper = [[NSStepper alloc] initWithFrame:NSZeroRect];
    stepper.valueWraps = NO;
    stepper.target = action([this, path](id sender) {
        const auto setValue = as<SettingsStepper>(controlAt(page_, path)).setValue;
        if (setValue) {
            setValue(static_cast<NSStepper*>(sender).integerValue);
        }
    });
    stepper.action = @selector(perform:);
    // Its label is hidden: the arrows alone, no number beside them.
    onRender([path, stepper](const SettingsPage& page) {
        const auto shown = as<SettingsStepper>(controlAt(page, path));
        stepper.minValue = static_cast<double>(shown.minimum);
        stepper.maxValue = static_cast<double>(shown.maximum);
        stepper.increment = static_cast<double>(shown.step);
        stepper.integerValue = static_cast<NSInteger>(shown.value);
    });
    return stepper;
}

NSView* SettingsPageRenderer::popUp(Path path) {
    NSPopUpButton* popUp = [[NSPopUpButton alloc] initWithFrame:NSZeroRect pullsDown:NO];
    popUp.target = action([this, path](id sender) {
        const auto shown = as<SettingsPopUp>(controlAt(page_, path));
        const NSInteger index = static_cast<NSPopUpButton*>(sender).indexOfSelectedItem;
        if (shown.pick && index >= 0 && static_cast<std::size_t>(index) < shown.choices.size()) {
            shown.pick(shown.choices[static_cast<std::size_t>(index)].tag);
        }
    });
    popUp.action = @selector(perform:);
    // At its ideal size.
    [popUp setContentHuggingPriority:NSLayoutPriorityRequired
                      forOrientation:NSLayoutConstraintOrientationHorizontal];
    onRender([path, popUp](const SettingsPage& page) {
        const auto shown = as<SettingsPopUp>(controlAt(page, path));
        // Items are added to the menu one by one: the pop-up's own adding drops equal titles.
        [popUp.menu removeAllItems];
        for (const SettingsChoice& choice : shown.choices) {
            [popUp.menu addItem:[[NSMenuItem alloc] initWithTitle:nonNilString(choice.title)
                                                           action:nil
                                                    keyEquivalent:@""]];
        }
        [popUp selectItemAtIndex:indexOf(shown.choices, shown.selectedTag)];
    });
    return popUp;
}

NSView* SettingsPageRenderer::segmentedPicker(Path path) {
    const auto shown = as<SettingsSegmentedPicker>(controlAt(page_, path));
    NSMutableArray<NSString*>* titles = [NSMutableArray array];
    for (const SettingsChoice& segment : shown.segments) {
        [titles addObject:nonNilString(segment.title)];
    }
    NSSegmentedControl* picker = [NSSegmentedControl
        segmentedControlWithLabels:titles
                      trackingMode:NSSegmentSwitchTrackingSelectOne
                            target:action([this, path](id sender) {
                                const auto current =
                                    as<SettingsSegmentedPicker>(controlAt(page_, path));
                                const NSInteger index =
                                    static_cast<NSSegmentedControl*>(sender).selectedSegment;
                                if (current.pick && index >= 0 &&
                                    static_cast<std::size_t>(index) < current.segments.size()) {
                                    current.pick(
                                        current.segments[static_cast<std::size_t>(index)].tag);
                                }
                            })
                            action:@selector(perform:)];
    picker.translatesAutoresizingMaskIntoConstraints = NO;
    [picker.widthAnchor constraintEqualToConstant:shown.width].active = YES;
    onRender([path, picker](const SettingsPage& page) {
        const auto current = as<SettingsSegmentedPicker>(controlAt(page, path));
        picker.toolTip = current.toolTip.empty() ? nil : nsString(current.toolTip);
        picker.selectedSegment = indexOf(current.segments, current.selectedTag);
    });
    return picker;
}

NSView* SettingsPageRenderer::button(Path path) {
    const auto shown = as<SettingsButton>(controlAt(page_, path));
    QuilletSettingsAction* target = action([this, path](id) {
        const auto action = as<SettingsButton>(controlAt(page_, path)).action;
        if (action) {
            action();
        }
    });
    NSButton* button = SettingsAppearance::button(shown, target);
    if (shown.style == SettingsButton::Style::bordered) {
        button.bezelStyle = NSBezelStyleRounded;
    } else {
        button.bordered = NO;
    }
    if (shown.small) {
        button.controlSize = NSControlSizeSmall;
    }
    button.hasDestructiveAction = shown.role == SettingsButton::Role::destructive ? YES : NO;
    onRender([path, button](const SettingsPage& page) {
        const auto current = as<SettingsButton>(controlAt(page, path));
        if (current.symbol.empty()) {
            button.title = nonNilString(current.title);
        }
        button.toolTip = current.toolTip.empty() ? nil : nsString(current.toolTip);
    });
    return button;
}

NSView* SettingsPageRenderer::textField(Path path) {
    NSTextField* field = [[NSTextField alloc] initWithFrame:NSZeroRect];
    field.bezeled = NO;
    field.drawsBackground = NO;
    field.focusRingType = NSFocusRingTypeNone;
    field.delegate = action([this, path](id sender) {
        const auto setText = as<SettingsSearchField>(controlAt(page_, path)).setText;
        if (auto typed = utf8String(static_cast<NSTextField*>(sender).stringValue);
            setText && typed) {
            setText(*typed);
        }
    });
    onRender([path, field](const SettingsPage& page) {
        const auto shown = as<SettingsSearchField>(controlAt(page, path));
        field.placeholderString = nonNilString(shown.placeholder);
        // What the user is typing stays as typed, caret and all.
        if (field.currentEditor == nil) {
            field.stringValue = nonNilString(shown.text);
        }
    });
    return field;
}

NSView* SettingsPageRenderer::badge(Path path) {
    NSTextField* text = SettingsAppearance::label("", font(TextStyle::caption, FontWeight::regular),
                                                  color(Tint::secondary));
    const Rounded capsule =
        roundedBox(text,
                   NSEdgeInsetsMake(Look::Badge::verticalPadding, Look::Badge::sidePadding,
                                    Look::Badge::verticalPadding, Look::Badge::sidePadding),
                   0, [[NSColor labelColor] colorWithAlphaComponent:Look::Badge::fillOpacity], nil);
    NSBox* shape = capsule.shape;
    onRender([path, text, shape](const SettingsPage& page) {
        setText(text, as<SettingsBadge>(controlAt(page, path)).text);
        // A capsule: ends as round as the badge is high.
        shape.cornerRadius =
            (text.intrinsicContentSize.height + 2 * Look::Badge::verticalPadding) / 2;
    });
    return capsule.view;
}

} // namespace quillet::macos
