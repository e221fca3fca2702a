#pragma once

/// The QCoreApplication that a program's main makes, for the tests of code that needs one. Standing without a
/// display or a platform plugin is part of what these tests show.

#include <QCoreApplication>
#include <gtest/gtest.h>
#include <memory>

namespace pictavo::tests {

class CoreApplication final : public ::testing::Environment {
  public:
    void SetUp() override {
        qputenv("LC_ALL", "C.UTF-8");  // what the system says is told in its words
        for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) qunsetenv(variable);
        application_ = std::make_unique<QCoreApplication>(count_, arguments_);
    }
    void TearDown() override { application_.reset(); }

  private:
    int count_ = 1;
    char name_[16] = "pictavo-tests";
    char* arguments_[2] = {name_, nullptr};
    std::unique_ptr<QCoreApplication> application_;
};

/// Every program of tests with a file that includes this has its application.
inline const auto* const kApplication =
    ::testing::AddGlobalTestEnvironment(std::make_unique<CoreApplication>().release());

}  // namespace pictavo::tests
