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
//
// Differences from a Mac that remain, so wrong Mac code may pass here:
// - GNUstep types many parameters `id` where Apple names a protocol (-[NSApplication
//   setDelegate:]), leaves most of its headers without nullability (nil passed where Apple says
//   nonnull warns only on a Mac), and declares extensions Apple never had
//   (-[NSString stringByTrimmingSpaces]).
// - NSEventType is an integer here and an enum on a Mac; BOOL is unsigned char here (bool on
//   Apple silicon); int64_t is long here and long long on a Mac.
// - Availability and deprecation for the deployment target are not checked, except for the
//   status item members and the renamed AppKit constants that sdk/AppKit/NSStatusItem.h and
//   RenamedByApple.h handle.
// - Every framework is visible to every file, so a missing #import shows only on a Mac.
// And correct Mac code may still fail here where GNUstep returns an untyped collection or
// `id<NSMenuItem>` (a property of an element is then looked up on `id`): screens, running
// applications, menus and pop-up buttons are corrected in sdk/AppKit; correct others the same
// way, with Apple's declaration.
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
