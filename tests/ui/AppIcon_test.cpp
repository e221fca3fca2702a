#include "ui/AppIcon.h"

#include <QImage>

#include "support/WidgetApplication.h"

namespace pictavo::tests {
namespace {

TEST(AppIcon, IsAPngFileOfTheSizeAskedForWithTransparentCorners) {
    for (const int size : {16, 48, 256}) {
        const Bytes file = AppIconPng(size);
        QImage image;
        ASSERT_TRUE(image.loadFromData(file.data(), static_cast<int>(file.size()), "PNG"));
        EXPECT_EQ(image.size(), QSize(size, size));
        EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
        EXPECT_EQ(image.pixelColor(size / 2, size / 2).alpha(), 255);
    }
}

}  // namespace
}  // namespace pictavo::tests
