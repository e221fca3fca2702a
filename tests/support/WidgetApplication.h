#pragma once

/// The QApplication that the window's program makes, for the tests of widgets. It needs no display: windows
/// are drawn off-screen.

#include <gtest/gtest.h>
#include <memory>

#include "ui/Application.h"

namespace pictavo::tests {

class WidgetApplication final : public ::testing::Environment {
  public:
    void SetUp() override {
        for (const char* variable : {"QT_SCALE_FACTOR", "QT_STYLE_OVERRIDE"}) qunsetenv(variable);
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application_ = std::make_unique<Application>(count_, arguments_);
        QApplication::setKeyboardInputInterval(60'000);  // a busy machine types slowly
    }
    void TearDown() override { application_.reset(); }

  private:
    int count_ = 1;
    char name_[16] = "pictavo-tests";
    char* arguments_[2] = {name_, nullptr};
    std::unique_ptr<Application> application_;
};

/// Every program of tests with a file that includes this has its application.
inline const auto* const kApplication =
    ::testing::AddGlobalTestEnvironment(std::make_unique<WidgetApplication>().release());

}  // namespace pictavo::tests
