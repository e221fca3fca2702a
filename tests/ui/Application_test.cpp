#include "ui/Application.h"

#include <QMessageBox>
#include <QTimer>
#include <gtest/gtest.h>
#include <new>

#include "support/WidgetApplication.h"

namespace pictavo::tests {
namespace {

/// Needs more memory for every event than there is.
class Greedy final : public QObject {
  protected:
    bool event(QEvent*) override { throw std::bad_alloc(); }
};

TEST(Application, TellsOfALackOfMemoryAndGoesOn) {
    std::vector<QString> told;
    QTimer::singleShot(0, [&told] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr) return;
        told.push_back(box->text());
        box->accept();
    });
    Greedy greedy;
    QEvent event(QEvent::User);
    EXPECT_FALSE(QCoreApplication::sendEvent(&greedy, &event));
    EXPECT_EQ(told, std::vector<QString>{
                        "There is not enough memory for this. Close other programs and try again."});
}

}  // namespace
}  // namespace pictavo::tests
