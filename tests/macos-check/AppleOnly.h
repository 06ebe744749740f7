// Forced in front of every src/macos file by the Linux syntax check (cmake/MacosCheck.cmake),
// never part of the real build. It stands for what Apple's SDK provides and this machine does
// not: GNUstep gives Foundation and most of AppKit; sdk/ replaces GNUstep's headers where they
// differ from Apple's and stands in for the frameworks GNUstep does not have (CoreFoundation,
// CoreGraphics, ApplicationServices, Carbon, dispatch, ServiceManagement, ScreenCaptureKit,
// Sparkle); GNUstepGaps.h declares the newer Foundation and AppKit members GNUstep lacks;
// RenamedByApple.h makes the old AppKit names that Apple deprecated fail as they do on a Mac.
//
// Everything is declared exactly as Apple declares it. If our code disagrees with one of these
// declarations, our code is wrong: never change a declaration to make a file pass.
//
// ARC: the files are checked with -fobjc-arc as on a Mac, so ARC's own rules (bridged casts,
// __weak, no retain/release) are checked too and nothing here needs neutralising.
#pragma once
#pragma clang system_header

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>

#include <ApplicationServices/ApplicationServices.h>
#include <Carbon/Carbon.h>
#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>
#import <ScreenCaptureKit/ScreenCaptureKit.h>
#import <ServiceManagement/ServiceManagement.h>
#import <Sparkle/Sparkle.h>
#include <dispatch/dispatch.h>

#include "GNUstepGaps.h"
#include "RenamedByApple.h"
