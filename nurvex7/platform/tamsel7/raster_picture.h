#pragma once

#include "nurvex7/export.h"
#include "nurvex7/platform/tamsel7/geometry.h"

#include <memory>

namespace tamsel7 {

class IPainter;

/// The counted pointer of the platform.
template <typename T>
using tamsel_ptr = std::shared_ptr<T>;

/// A picture of pixels that knows how to show itself.
class NURVEX7_API IRasterPicture {
public:
    virtual ~IRasterPicture();
    /// Space   pixel
    virtual size<int> GetSize() const = 0;
    /// Space   the painter's current coordinates
    virtual void Draw(IPainter* painter, const rectangle<double>& area) const = 0;
};

} // namespace tamsel7
