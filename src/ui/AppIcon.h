#pragma once

#include <QIcon>

#include "core/Bytes.h"

namespace pictavo {

/// The program's icon, drawn: a phone whose screen is a picture.
QIcon AppIcon();

/// The same as a PNG file of `size` x `size` pixels.
Bytes AppIconPng(int size);

}  // namespace pictavo
