#include "shell/TextLocale.h"

#include <gtest/gtest.h>

#include "support/Environment.h"

namespace pictavo::tests {
namespace {

class TextLocaleTest : public ::testing::Test {
  protected:
    TextLocaleTest() {
        for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) environment.Unset(variable);
    }

    Environment environment;
};

TEST_F(TextLocaleTest, IsCyrillicByItsScript) {
    for (const char* name : {"ru_RU.UTF-8", "uk_UA", "ru", "bg_BG.CP1251", "be_BY"}) {
        environment.Set("LANG", name);
        EXPECT_TRUE(IsLocaleCyrillic()) << name;
    }
    for (const char* name : {"de_DE.UTF-8", "pl_PL", "en_US", "C", "C.UTF-8", "POSIX"}) {
        environment.Set("LANG", name);
        EXPECT_FALSE(IsLocaleCyrillic()) << name;
    }
}

TEST_F(TextLocaleTest, WithoutAVariableItIsTheSystems) {
    for (const char* variable : {"LC_NUMERIC", "LC_MESSAGES", "LANGUAGE"}) environment.Unset(variable);
    EXPECT_FALSE(IsLocaleCyrillic());
}

TEST_F(TextLocaleTest, IsThatOfTheVariableThatWins) {
    environment.Set("LANG", "ru_RU.UTF-8");
    environment.Set("LC_CTYPE", "de_DE.UTF-8");
    EXPECT_FALSE(IsLocaleCyrillic());
    environment.Set("LC_ALL", "uk_UA.UTF-8");
    EXPECT_TRUE(IsLocaleCyrillic());
    environment.Set("LC_ALL", "");
    environment.Set("LC_CTYPE", "");
    EXPECT_TRUE(IsLocaleCyrillic());
}

}  // namespace
}  // namespace pictavo::tests
