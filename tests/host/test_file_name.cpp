#include "base/file_name.h"

#include <gtest/gtest.h>

#include <string>

namespace nira {
namespace {

TEST(FileName, MayHoldEveryCharacterButAFew) {
    EXPECT_FALSE(HasForbiddenCharacter(u""));
    EXPECT_FALSE(HasForbiddenCharacter(u"it's 100% & (a) [b] ;,=^!-~.txt"));
    EXPECT_FALSE(HasForbiddenCharacter(u"\u00FC\u6771\U0001F600\x7F"));
    for (const char16_t unit : std::u16string(u"\"*/:<>?|\t\n\x01\x1F")) {
        EXPECT_TRUE(HasForbiddenCharacter((std::u16string(u"a") + unit + u"b").c_str())) << int{unit};
        EXPECT_TRUE(HasForbiddenCharacter(std::u16string(1, unit).c_str())) << int{unit};
    }
}

TEST(FileName, IsTheLastPartOfAPath) {
    EXPECT_FALSE(HasForbiddenCharacter(u"C:\\a\\b.txt"));
    EXPECT_TRUE(HasForbiddenCharacter(u"C:\\a\\b:c.txt"));
}

}  // namespace
}  // namespace nira
