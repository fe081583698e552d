// Stretching.
#pragma once

#include <QImage>

namespace platform {

// Fills an image with another of other size. Where pixels come together, the bits stay that all of them have.
void stretch(const QImage &from, QImage &to);

} // namespace platform
