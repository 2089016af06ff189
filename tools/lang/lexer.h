// Splits one source line into tokens. Works on the raw bytes: names, numbers and
// operators are ASCII, and anything else may only stand inside a string or a comment,
// so text that is not valid UTF-8 never needs decoding here.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace klvr {

enum class Tok : std::uint8_t {
    Name,
    Integer,
    Real,
    String,  // text holds the literal with its quotes; decodeString() gives the value
    Op,      // text holds the operator: + - * / \ & ^ = < > <= >= <> ( ) , . :
};

struct Token {
    Tok kind;
    std::string_view text;
};

// Result of scanning a line: the tokens up to a comment, or an error message.
struct LineTokens {
    std::vector<Token> tokens;
    std::string error;  // "Closing quote expected", "Invalid character"; empty when fine
};

// Tokenizes `line` (without its line break; a trailing carriage return is ignored).
// `out` is reused between lines to avoid allocations.
void tokenizeLine(std::string_view line, LineTokens& out);

// The same, appending to `tokens`; returns the error message or "" (a literal).
const char* appendLineTokens(std::string_view line, std::vector<Token>& tokens);

// The value of a string literal token: quotes removed, "" turned into ".
std::string decodeString(std::string_view literal);

// Lower-case copy of an ASCII name (names are case-insensitive).
std::string lowerName(std::string_view name);

}  // namespace klvr
