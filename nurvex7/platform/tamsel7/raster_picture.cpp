#include "nurvex7/platform/tamsel7/raster_picture.h"

namespace tamsel7 {

IRasterPicture::~IRasterPicture() = default;

} // namespace tamsel7
