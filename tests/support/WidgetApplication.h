#pragma once

/// The QApplication that the window's program makes, for the tests of widgets. It needs no display: windows
/// are drawn off-screen.

#include <gtest/gtest.h>
#include <memory>

#include "support/TempFolder.h"
#include "ui/Application.h"

namespace pictavo::tests {

class WidgetApplication final : public ::testing::Environment {
  public:
    void SetUp() override {
        qputenv("LC_ALL", "C.UTF-8");  // what the system says is told in its words
        for (const char* variable : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_FONT_DPI",
                                     "QT_STYLE_OVERRIDE", "QT_QPA_PLATFORMTHEME"})
            qunsetenv(variable);
        qputenv("XDG_CONFIG_HOME", config_.Path().string().c_str());  // where choosers keep their history
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application_ = std::make_unique<Application>(count_, arguments_);
        QApplication::setKeyboardInputInterval(60'000);  // a busy machine types slowly
    }
    void TearDown() override { application_.reset(); }

  private:
    TempFolder config_;
    int count_ = 1;
    char name_[16] = "pictavo-tests";
    char* arguments_[2] = {name_, nullptr};
    std::unique_ptr<Application> application_;
};

/// Every program of tests with a file that includes this has its application.
inline const auto* const kApplication =
    ::testing::AddGlobalTestEnvironment(std::make_unique<WidgetApplication>().release());

}  // namespace pictavo::tests
