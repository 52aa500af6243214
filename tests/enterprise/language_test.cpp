#include "enterprise/language.h"

#include <gtest/gtest.h>

namespace tandril::enterprise {
namespace {

TEST(LanguageOfTag, TakesTheTagWithOrWithoutRegionInAnyCase) {
    EXPECT_EQ(languageOfTag("de"), Language::German);
    EXPECT_EQ(languageOfTag(" NL-be "), Language::Dutch);
    EXPECT_EQ(languageOfTag("fr"), std::nullopt);
    EXPECT_EQ(languageOfTag(""), std::nullopt);
    EXPECT_EQ(languageOfTag("deu"), std::nullopt);
}

struct Wish {
    std::string_view header;
    std::optional<Language> language;
};

class PreferredLanguage : public testing::TestWithParam<Wish> {};

TEST_P(PreferredLanguage, IsTheOneOfTheHighestWeightAmongOurs) {
    EXPECT_EQ(preferredLanguage(GetParam().header), GetParam().language) << GetParam().header;
}

INSTANTIATE_TEST_SUITE_P(Headers, PreferredLanguage,
                         testing::Values(Wish{"", std::nullopt}, Wish{"fr,it", std::nullopt},
                                         Wish{"de", Language::German},
                                         Wish{"en,de", Language::English},
                                         Wish{"en;q=0.5,de;q=0.75", Language::German},
                                         Wish{"fr, nl;q=0.25, en;q=0.125", Language::Dutch},
                                         Wish{"de;q=0", std::nullopt}, Wish{"*", std::nullopt}));

}  // namespace
}  // namespace tandril::enterprise
