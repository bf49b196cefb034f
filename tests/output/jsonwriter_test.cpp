#include "output/jsonwriter.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <cmath>

namespace {

QByteArray encoded(const JsonValue &value)
{
    Result<QByteArray> bytes = encodeJson(value);
    EXPECT_TRUE(bytes.has_value());
    return bytes ? *bytes : QByteArray();
}

} // namespace

TEST(JsonWriter, PrettySortedLayout)
{
    JsonValue::Object inner{{"b", qint64(2)}, {"a", true}};
    JsonValue::Object root{{"zeta", JsonValue::Array{qint64(1), JsonValue(), u"x"}},
                           {"alpha", inner},
                           {"empty", JsonValue::Array{}},
                           {"none", JsonValue::Object{}}};
    EXPECT_EQ(encoded(root), QByteArray("{\n"
                                        "  \"alpha\" : {\n"
                                        "    \"a\" : true,\n"
                                        "    \"b\" : 2\n"
                                        "  },\n"
                                        "  \"empty\" : [],\n"
                                        "  \"none\" : {},\n"
                                        "  \"zeta\" : [\n"
                                        "    1,\n"
                                        "    null,\n"
                                        "    \"x\"\n"
                                        "  ]\n"
                                        "}"));
}

TEST(JsonWriter, NumbersAreShortestExactForms)
{
    const std::pair<double, const char *> rows[] = {{7.007, "7.007"},
                                                    {10.0, "10"},
                                                    {0.1, "0.1"},
                                                    {29.97002997002997, "29.97002997002997"},
                                                    {-0.0, "-0"},
                                                    {1e21, "1e+21"},
                                                    {1.0 / 3.0, "0.3333333333333333"}};
    for (const auto &[value, text] : rows)
        EXPECT_EQ(encoded(JsonValue(value)), QByteArray(text));
    EXPECT_EQ(encoded(JsonValue(qint64(9007199254740993))), "9007199254740993");
    EXPECT_EQ(encoded(JsonValue(-3)), "-3");
    EXPECT_FALSE(encodeJson(JsonValue(std::nan(""))).has_value());
    EXPECT_FALSE(encodeJson(JsonValue::Array{JsonValue(INFINITY)}).has_value());
}

TEST(JsonWriter, StringsEscapeOnlyWhatJsonNeeds)
{
    const QString text = QString::fromUtf8("a/b \"q\" \\ \n\t\r\b\f \x01\x1f ÉТ中😀 \x7f");
    const QByteArray out = encoded(JsonValue(text));
    EXPECT_EQ(out, QByteArray("\"a/b \\\"q\\\" \\\\ \\n\\t\\r\\b\\f \\u0001\\u001f ") +
                       QString::fromUtf8("ÉТ中😀").toUtf8() + " \x7f\"");
    // Whatever we write, Qt's reader reads back to the same text.
    const QByteArray wrapped = encoded(JsonValue::Object{{"k", text}});
    EXPECT_EQ(QJsonDocument::fromJson(wrapped).object().value("k").toString(), text);
    EXPECT_FALSE(wrapped.startsWith("\xEF\xBB\xBF"));
}
