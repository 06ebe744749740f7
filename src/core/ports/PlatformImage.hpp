#pragma once

#include "core/ports/Geometry.hpp"

#include <memory>

namespace quillet {

// An image owned by the platform (an NSImage on a Mac). The core passes images along and asks
// only for their size; drawing them is the adapters' business.
class PlatformImage {
public:
    virtual ~PlatformImage() = default;
    virtual Size pointSize() const = 0;
};

using ImageRef = std::shared_ptr<const PlatformImage>;

// Named system symbol images (SF Symbols).
class SymbolImages {
public:
    virtual ~SymbolImages() = default;
    // Null when the system has no symbol of that name.
    virtual ImageRef symbol(const char* name) const = 0;
    virtual ImageRef emptyImage() const = 0;
};

} // namespace quillet
