// The runner's operators and conversions, and the lexer's reading of odd lines: the
// places where a wrong corner case silently gives a wrong answer.
#include "tools/lang/lexer.h"
#include "tools/lang/value.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace {

using klvr::BinOp;
using klvr::Value;

Value I(std::int64_t v) { return Value::ofInteger(v); }
Value D(double v) { return Value::ofDouble(v); }
Value S(const char* v) { return Value::ofString(QString::fromUtf8(v)); }
Value B(bool v) { return Value::ofBoolean(v); }

// The result as text with its type, or the error message.
std::string outcome(BinOp op, const Value& a, const Value& b) {
    try {
        const Value r = klvr::binary(op, a, b);
        const char* type = r.type == klvr::VType::Integer ? "I:" : r.type == klvr::VType::Double ? "D:"
                         : r.type == klvr::VType::String  ? "S:" : r.type == klvr::VType::Boolean ? "B:" : "N:";
        return type + klvr::textOf(r).toStdString();
    } catch (const klvr::RuntimeFailure& failure) {
        return failure.what();
    }
}

struct OpCase {
    BinOp op;
    Value a, b;
    std::string expected;
};

class Operators : public ::testing::TestWithParam<OpCase> {};

TEST_P(Operators, GiveTheDocumentedResult) {
    const OpCase& c = GetParam();
    EXPECT_EQ(outcome(c.op, c.a, c.b), c.expected);
}

// "Add_I5_0", "IntDiv_Divisionbyzero_17": the operator, what it should give, its row.
std::string operatorCaseName(const ::testing::TestParamInfo<OpCase>& info) {
    static const char* const names[] = {"Add", "Sub", "Mul", "Div", "IntDiv", "Mod", "Pow", "Concat", "Eq",
                                        "Ne",  "Lt",  "Gt",  "Le",  "Ge",     "And", "Or",  "Xor",    "Is"};
    std::string name = std::string(names[static_cast<int>(info.param.op)]) + "_";
    for (char c : info.param.expected)
        if (std::isalnum(static_cast<unsigned char>(c)))
            name += c;
    return name + "_" + std::to_string(info.index);
}

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

INSTANTIATE_TEST_SUITE_P(
    Table, Operators,
    ::testing::Values(
        OpCase{BinOp::Add, I(2), I(3), "I:5"}, OpCase{BinOp::Add, I(kMax), I(1), "Overflow"},
        OpCase{BinOp::Sub, I(kMin), I(1), "Overflow"}, OpCase{BinOp::Mul, I(kMax), I(2), "Overflow"},
        OpCase{BinOp::Add, I(1), D(0.5), "D:1.5"}, OpCase{BinOp::Add, S("a"), I(1), "S:a1"},
        OpCase{BinOp::Add, I(1), S("a"), "S:1a"}, OpCase{BinOp::Add, Value(), I(4), "I:4"},
        OpCase{BinOp::Add, B(true), I(1), "Type mismatch"}, OpCase{BinOp::Sub, S("3"), I(1), "Type mismatch"},
        OpCase{BinOp::Concat, D(0.1), B(false), "S:0.1False"}, OpCase{BinOp::Concat, Value(), Value(), "S:"},
        OpCase{BinOp::Div, I(7), I(2), "D:3.5"}, OpCase{BinOp::Div, I(1), D(0.0), "Division by zero"},
        OpCase{BinOp::IntDiv, I(-7), I(2), "I:-3"}, OpCase{BinOp::IntDiv, I(kMin), I(-1), "Overflow"},
        OpCase{BinOp::IntDiv, D(7.6), I(2), "I:4"}, OpCase{BinOp::IntDiv, I(1), I(0), "Division by zero"},
        OpCase{BinOp::Mod, I(-7), I(3), "I:-1"}, OpCase{BinOp::Mod, I(kMin), I(-1), "I:0"},
        OpCase{BinOp::Mod, D(7.5), I(2), "D:1.5"}, OpCase{BinOp::Mod, D(1), D(0), "Division by zero"},
        OpCase{BinOp::Pow, I(2), I(-1), "D:0.5"}, OpCase{BinOp::IntDiv, D(1e300), I(1), "Overflow"},
        OpCase{BinOp::Eq, I(1), D(1.0), "B:True"}, OpCase{BinOp::Lt, S("B"), S("a"), "B:True"},
        OpCase{BinOp::Eq, Value(), S(""), "B:True"}, OpCase{BinOp::Eq, Value(), I(0), "B:True"},
        OpCase{BinOp::Eq, S("1"), I(1), "Type mismatch"}, OpCase{BinOp::Gt, B(true), B(false), "B:True"},
        OpCase{BinOp::Is, Value(), I(0), "B:False"}, OpCase{BinOp::Is, Value(), Value(), "B:True"},
        OpCase{BinOp::And, I(6), I(3), "I:2"}, OpCase{BinOp::Xor, B(true), B(true), "B:False"},
        OpCase{BinOp::Or, B(true), I(1), "Type mismatch"}),
    operatorCaseName);

TEST(Conversions, AssignmentToTypedVariables) {
    using klvr::DeclType;
    EXPECT_EQ(klvr::convertTo(DeclType::Integer, D(2.5)).i, 3);  // half away from zero
    EXPECT_EQ(klvr::convertTo(DeclType::Integer, D(-2.5)).i, -3);
    EXPECT_EQ(klvr::convertTo(DeclType::Integer, S(" 42 apples")).i, 42);
    EXPECT_EQ(klvr::convertTo(DeclType::Integer, Value()).i, 0);
    EXPECT_THROW(klvr::convertTo(DeclType::Integer, B(true)), klvr::RuntimeFailure);
    EXPECT_THROW(klvr::convertTo(DeclType::Integer, D(1e19)), klvr::RuntimeFailure);
    EXPECT_EQ(klvr::convertTo(DeclType::Double, S("2.5")).d, 2.5);
    EXPECT_EQ(klvr::convertTo(DeclType::String, D(1.0 / 3)).str(), "0.333333333333333");
    EXPECT_EQ(klvr::convertTo(DeclType::String, Value()).str(), "");
    EXPECT_TRUE(klvr::convertTo(DeclType::Boolean, S("TRUE")).b);
    EXPECT_FALSE(klvr::convertTo(DeclType::Boolean, I(0)).b);
    EXPECT_THROW(klvr::convertTo(DeclType::Boolean, S("yes")), klvr::RuntimeFailure);
    EXPECT_EQ(klvr::convertTo(DeclType::Variant, S("x")).type, klvr::VType::String);
    EXPECT_THROW(klvr::truthOf(S("True")), klvr::RuntimeFailure);
    EXPECT_THROW(klvr::negate(I(kMin)), klvr::RuntimeFailure);
}

TEST(Conversions, ValReadsTheNumberAtTheStart) {
    const std::pair<const char*, const char*> cases[] = {
        {"  12abc", "12"}, {"-3.5x", "-3.5"}, {".5", "0.5"}, {"7.", "7"}, {"1e3", "1000"}, {"1e", "1"}, {"+", "0"}, {"", "0"},
        {"99999999999999999999", "1e+20"}};  // the last is too big for an Integer
    for (const auto& [text, value] : cases)
        EXPECT_EQ(klvr::textOf(klvr::numberFromText(QString::fromUtf8(text))).toStdString(), value) << text;
    EXPECT_EQ(klvr::numberFromText("12").type, klvr::VType::Integer);
}

std::vector<std::string> lex(const std::string& line, std::string* error = nullptr) {
    klvr::LineTokens out;
    klvr::tokenizeLine(line, out);
    if (error)
        *error = out.error;
    std::vector<std::string> texts;
    for (const klvr::Token& t : out.tokens)
        texts.emplace_back(t.text);
    return texts;
}

TEST(Lexer, SplitsLinesAsTheLanguageReadsThem) {
    using V = std::vector<std::string>;
    EXPECT_EQ(lex("If a<=b Then x=1.5e-3 ' rest \"ignored"), (V{"If", "a", "<=", "b", "Then", "x", "=", "1.5e-3"}));
    EXPECT_EQ(lex("s = \"it's \"\"quoted\"\"\" & t\r"), (V{"s", "=", "\"it's \"\"quoted\"\"\"", "&", "t"}));
    EXPECT_EQ(lex("a<>b>=c\\d^2"), (V{"a", "<>", "b", ">=", "c", "\\", "d", "^", "2"}));
    EXPECT_EQ(lex("x = 1.foo"), (V{"x", "=", "1", ".", "foo"}));  // a dot without digits after it is a member dot
    EXPECT_EQ(lex("\t_name1 = 2e"), (V{"_name1", "=", "2", "e"}));
    std::string error;
    EXPECT_EQ(lex("x = \"open", &error), (V{"x", "="}));
    EXPECT_EQ(error, "Closing quote expected");
    lex("x = 1 @ 2", &error);
    EXPECT_EQ(error, "Invalid character");
    lex("x = \"\xff\xfe\" ' \x01 in a comment", &error);
    EXPECT_EQ(error, "");
    EXPECT_EQ(klvr::decodeString("\"a\"\"b\""), "a\"b");
    EXPECT_EQ(klvr::decodeString("\"\""), "");
    EXPECT_EQ(klvr::lowerName("MiXeD_9"), "mixed_9");
}

}  // namespace
