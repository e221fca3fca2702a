#pragma once

#include <QIcon>

namespace pictavo {

/// The program's icon, drawn: a phone whose screen is a picture.
QIcon AppIcon();

}  // namespace pictavo
