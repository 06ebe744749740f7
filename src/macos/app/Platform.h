#pragma once

#include "macos/app/AppKitProcessContext.h"
#include "macos/app/NSLogSink.h"
#include "macos/menubar/AXAccessibilityReader.h"
#include "macos/menubar/AppKitWorkspace.h"
#include "macos/menubar/CGDisplayGeometry.h"
#include "macos/menubar/CGScreenCapture.h"
#include "macos/menubar/CGWindowListSource.h"

namespace quillet::macos {

// The live adapters, one of each, for the whole process. Everything built on the Mac takes its
// ports from here by reference; tests build the core types with simulated ports instead.
struct Platform {
    // Built on first use, which main makes before anything else runs.
    static Platform& shared();

    Platform() = default;
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;

    CGWindowListSource windows;
    CGDisplayGeometry displays;
    AppKitWorkspace workspace;
    AXAccessibilityReader accessibility;
    CGScreenCapture screenCapture;
    AppKitProcessContext process;
    NSLogSink log;
};

} // namespace quillet::macos
