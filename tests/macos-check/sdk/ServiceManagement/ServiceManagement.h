// Stand-in for <ServiceManagement/ServiceManagement.h>, for the Linux syntax check of src/macos
// only: SMAppService as SMAppService.h of the macOS 14.2 SDK declares it (the members the project's
// Apple API reference lists).
#pragma once

#import <Foundation/Foundation.h>
#include <os/availability.h>

NS_ASSUME_NONNULL_BEGIN

// SMAppService.h
typedef NS_ENUM(NSInteger, SMAppServiceStatus) {
    SMAppServiceStatusNotRegistered,
    SMAppServiceStatusEnabled,
    SMAppServiceStatusRequiresApproval,
    SMAppServiceStatusNotFound,
} NS_SWIFT_NAME(SMAppService.Status) API_AVAILABLE(macos(13.0), macCatalyst(16.0));

API_AVAILABLE(macos(13.0), macCatalyst(16.0))
@interface SMAppService : NSObject
@property (class, readonly) SMAppService* mainAppService NS_SWIFT_NAME(mainApp)
    API_AVAILABLE(macos(13.0), macCatalyst(16.0));
@property (readonly) SMAppServiceStatus status API_AVAILABLE(macos(13.0), macCatalyst(16.0));
- (BOOL)registerAndReturnError:(NSError* _Nullable __autoreleasing* _Nullable)error
    API_AVAILABLE(macos(13.0), macCatalyst(16.0));
- (BOOL)unregisterAndReturnError:(NSError* _Nullable __autoreleasing* _Nullable)error
    API_AVAILABLE(macos(13.0), macCatalyst(16.0));
+ (void)openSystemSettingsLoginItems API_AVAILABLE(macos(13.0), macCatalyst(16.0));
@end

NS_ASSUME_NONNULL_END
