#include "macos/menubar/AppKitWorkspace.h"

#import "macos/support/AppKitImage.h"
#import "macos/support/Strings.h"

#import <AppKit/AppKit.h>

#include <map>

namespace quillet::macos {

struct AppKitWorkspace::Observers {
    struct Registration {
        NSNotificationCenter* center;
        id<NSObject> observer;
    };
    ObserverToken nextToken = 1;
    std::map<ObserverToken, Registration> byToken;
};

namespace {

NSNotificationName notificationName(WorkspaceEvent event) {
    switch (event) {
    case WorkspaceEvent::didLaunchApplication:
        return NSWorkspaceDidLaunchApplicationNotification;
    case WorkspaceEvent::didChangeScreenParameters:
        return NSApplicationDidChangeScreenParametersNotification;
    case WorkspaceEvent::didActivateApplication:
        break;
    }
    return NSWorkspaceDidActivateApplicationNotification;
}

// Workspace notifications are posted only to the workspace's own notification center; the
// application's go to the default one.
NSNotificationCenter* notificationCenter(WorkspaceEvent event) {
    if (event == WorkspaceEvent::didChangeScreenParameters) {
        return [NSNotificationCenter defaultCenter];
    }
    return [[NSWorkspace sharedWorkspace] notificationCenter];
}

} // namespace

AppKitWorkspace::AppKitWorkspace() : observers_(std::make_unique<Observers>()) {}

AppKitWorkspace::~AppKitWorkspace() {
    for (const auto& [token, registration] : observers_->byToken) {
        [registration.center removeObserver:registration.observer];
    }
}

std::optional<std::string> AppKitWorkspace::applicationPath(const std::string& bundleID) const {
    NSString* identifier = nsString(bundleID);
    if (identifier == nil) {
        return std::nullopt;
    }
    NSURL* url = [[NSWorkspace sharedWorkspace] URLForApplicationWithBundleIdentifier:identifier];
    return utf8String([url path]);
}

std::string AppKitWorkspace::displayName(const std::string& path) const {
    NSString* file = nsString(path);
    if (file == nil) {
        return path;
    }
    return utf8String([[NSFileManager defaultManager] displayNameAtPath:file]).value_or(path);
}

ImageRef AppKitWorkspace::icon(const std::string& path) const {
    NSString* file = nsString(path);
    if (file == nil) {
        return nullptr;
    }
    return imageRef([[NSWorkspace sharedWorkspace] iconForFile:file]);
}

std::vector<Pid> AppKitWorkspace::runningProcesses(const std::string& bundleID) const {
    std::vector<Pid> pids;
    NSString* identifier = nsString(bundleID);
    if (identifier == nil) {
        return pids;
    }
    for (NSRunningApplication* application in
         [NSRunningApplication runningApplicationsWithBundleIdentifier:identifier]) {
        pids.push_back([application processIdentifier]);
    }
    return pids;
}

std::vector<Pid> AppKitWorkspace::runningApplicationProcesses() const {
    std::vector<Pid> pids;
    for (NSRunningApplication* application in [[NSWorkspace sharedWorkspace] runningApplications]) {
        pids.push_back([application processIdentifier]);
    }
    return pids;
}

std::optional<RunningApplication> AppKitWorkspace::runningApplication(Pid pid) const {
    NSRunningApplication* application =
        [NSRunningApplication runningApplicationWithProcessIdentifier:pid];
    if (application == nil) {
        return std::nullopt;
    }
    return RunningApplication{utf8String([application bundleIdentifier]),
                              utf8String([application localizedName]).value_or(std::string())};
}

std::optional<std::string> AppKitWorkspace::frontmostBundleID() const {
    return utf8String([[[NSWorkspace sharedWorkspace] frontmostApplication] bundleIdentifier]);
}

bool AppKitWorkspace::openURL(const std::string& url) {
    NSString* text = nsString(url);
    NSURL* target = text == nil ? nil : [NSURL URLWithString:text];
    return target != nil && [[NSWorkspace sharedWorkspace] openURL:target];
}

Workspace::ObserverToken AppKitWorkspace::addObserver(WorkspaceEvent event,
                                                      std::function<void()> handler) {
    // The block keeps its own copy of the handler until the observer is removed.
    NSNotificationCenter* center = notificationCenter(event);
    id<NSObject> observer = [center addObserverForName:notificationName(event)
                                                object:nil
                                                 queue:[NSOperationQueue mainQueue]
                                            usingBlock:^(NSNotification*) {
                                                handler();
                                            }];
    const ObserverToken token = observers_->nextToken++;
    observers_->byToken.emplace(token, Observers::Registration{center, observer});
    return token;
}

void AppKitWorkspace::removeObserver(ObserverToken token) {
    auto found = observers_->byToken.find(token);
    if (found == observers_->byToken.end()) {
        return;
    }
    [found->second.center removeObserver:found->second.observer];
    observers_->byToken.erase(found);
}

ImageRef AppKitWorkspace::symbol(const char* name) const {
    NSString* symbolName = name == nullptr ? nil : nsString(name);
    if (symbolName == nil) {
        return nullptr;
    }
    return imageRef([NSImage imageWithSystemSymbolName:symbolName accessibilityDescription:nil]);
}

ImageRef AppKitWorkspace::emptyImage() const {
    return imageRef([[NSImage alloc] init]);
}

} // namespace quillet::macos
