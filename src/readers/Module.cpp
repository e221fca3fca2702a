#include "shell/LatePictureLoader.h"
#include "shell/QtPictureLoader.h"

/// All that the module shows to the outside.
extern "C" __attribute__((visibility("default"))) pictavo::PictureLoader* PictavoPictureLoader() {
    static pictavo::QtPictureLoader loader;
    return &loader;
}

// Its type is what the program that loads the module takes it for.
static_assert(std::is_same_v<decltype(&PictavoPictureLoader), pictavo::PictureLoaderOfModule*>);
