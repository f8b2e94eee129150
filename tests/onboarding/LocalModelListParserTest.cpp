#include "onboarding/LocalModelListParser.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

using LocalModelListParser::parse;

TEST(LocalModelListParser, TakesEachChatModelOnceAndTrimmed)
{
    const auto models = parse(
        R"({"data":[{"id":" llama3 "},{"id":"llama3"},{"id":"nomic-embed-text"},{"id":""}]})");

    EXPECT_EQ(models, QStringList{u"llama3"_s});
}

TEST(LocalModelListParser, KeepsTheOrderOfTheServer)
{
    EXPECT_EQ(parse(R"({"data":[{"id":"z"},{"id":"a"},{"id":"m"}]})"),
              QStringList({u"z"_s, u"a"_s, u"m"_s}));
}

TEST(LocalModelListParser, KeepsAByteOrderMarkOfAName)
{
    EXPECT_EQ(parse("{\"data\":[{\"id\":\"\xef\xbb\xbfqwen\"}]}"), QStringList{u"\uFEFFqwen"_s});
}

TEST(LocalModelListParser, KeepsModelsThatDifferInCase)
{
    EXPECT_EQ(parse(R"({"data":[{"id":"Llama3"},{"id":"llama3"}]})"),
              QStringList({u"Llama3"_s, u"llama3"_s}));
}

TEST(LocalModelListParser, DropsEmbeddingModelsInEveryCaseAndAnywhere)
{
    EXPECT_EQ(parse(R"({"data":[{"id":"EMBED"},{"id":"mxbai-Embed-large"},{"id":"a/embedding"},
                                {"id":"qwen"}]})"),
              QStringList{u"qwen"_s});
}

TEST(LocalModelListParser, TrimsLineBreaksAndSkipsWhatIsBlank)
{
    EXPECT_EQ(parse(R"({"data":[{"id":"\n\tqwen 3\r\n"},{"id":" \n"}]})"),
              QStringList{u"qwen 3"_s});
}

TEST(LocalModelListParser, IgnoresOtherKeys)
{
    EXPECT_EQ(parse(R"({"object":"list","data":[{"id":"a","object":"model","owned_by":null}]})"),
              QStringList{u"a"_s});
}

TEST(LocalModelListParser, AnEmptyListHasNoModels)
{
    EXPECT_EQ(parse(R"({"data":[]})"), QStringList());
}

TEST(LocalModelListParser, KeepsAThousandModels)
{
    QByteArray body = R"({"data":[{"id":"model-0"})";
    QStringList expected{u"model-0"_s};
    for (int number = 1; number < 1000; ++number) {
        body += R"(,{"id":"model-)" + QByteArray::number(number) + R"("})";
        expected.append(u"model-"_s + QString::number(number));
    }
    body += "]}";

    EXPECT_EQ(parse(body), expected);
}

class NoModelListTest : public testing::TestWithParam<QByteArray>
{};

TEST_P(NoModelListTest, GivesNothing)
{
    EXPECT_EQ(parse(GetParam()), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(LocalModelListParser, NoModelListTest,
                         testing::Values("", "Ollama is running", "{}", "[]", "null",
                                         R"({"models":[{"id":"a"}]})", R"({"data":{"id":"a"}})",
                                         R"({"data":null})", R"({"data":["a"]})",
                                         R"({"data":[{"id":"a"},{}]})",
                                         R"({"data":[{"id":"a"},{"id":7}]})",
                                         R"({"data":[{"id":null}]})", R"({"data":[{"id":"a"})",
                                         "{\"data\":[{\"id\":\"\xff\"}]}"));

} // namespace
} // namespace vantrel
