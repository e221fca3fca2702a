#include "shell/LatePictureLoader.h"
#include "shell/QtPictureLoader.h"

namespace pictavo {

Status LatePictureLoader::LoadModule() {
    static QtPictureLoader loader;
    loader_ = &loader;
    return {};
}

}  // namespace pictavo
