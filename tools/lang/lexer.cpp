#include "tools/lang/lexer.h"

namespace klvr {

namespace {

bool isNameStart(unsigned char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
bool isDigit(unsigned char c) { return c >= '0' && c <= '9'; }
bool isNameChar(unsigned char c) { return isNameStart(c) || isDigit(c); }

}  // namespace

void tokenizeLine(std::string_view line, LineTokens& out) {
    out.tokens.clear();
    out.error = appendLineTokens(line, out.tokens);
}

const char* appendLineTokens(std::string_view line, std::vector<Token>& tokens) {
    std::size_t i = 0;
    const std::size_t n = line.size();
    while (i < n) {
        const unsigned char c = static_cast<unsigned char>(line[i]);
        if (c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v') {
            ++i;
        } else if (c == '\'') {
            return "";  // comment up to the end of the line
        } else if (isNameStart(c)) {
            std::size_t j = i + 1;
            while (j < n && isNameChar(static_cast<unsigned char>(line[j])))
                ++j;
            tokens.push_back({Tok::Name, line.substr(i, j - i)});
            i = j;
        } else if (isDigit(c)) {
            std::size_t j = i;
            while (j < n && isDigit(static_cast<unsigned char>(line[j])))
                ++j;
            Tok kind = Tok::Integer;
            if (j + 1 < n && line[j] == '.' && isDigit(static_cast<unsigned char>(line[j + 1]))) {
                kind = Tok::Real;
                ++j;
                while (j < n && isDigit(static_cast<unsigned char>(line[j])))
                    ++j;
            }
            if (j < n && (line[j] == 'e' || line[j] == 'E')) {
                std::size_t k = j + 1;
                if (k < n && (line[k] == '+' || line[k] == '-'))
                    ++k;
                if (k < n && isDigit(static_cast<unsigned char>(line[k]))) {
                    kind = Tok::Real;
                    j = k;
                    while (j < n && isDigit(static_cast<unsigned char>(line[j])))
                        ++j;
                }
            }
            tokens.push_back({kind, line.substr(i, j - i)});
            i = j;
        } else if (c == '"') {
            std::size_t j = i + 1;
            for (;;) {
                if (j >= n)
                    return "Closing quote expected";
                if (line[j] == '"') {
                    if (j + 1 < n && line[j + 1] == '"') {
                        j += 2;  // a doubled quote stands for one quote character
                        continue;
                    }
                    break;
                }
                ++j;
            }
            tokens.push_back({Tok::String, line.substr(i, j + 1 - i)});
            i = j + 1;
        } else {
            std::size_t len = 0;
            switch (c) {
            case '<':
                len = (i + 1 < n && (line[i + 1] == '=' || line[i + 1] == '>')) ? 2 : 1;
                break;
            case '>':
                len = (i + 1 < n && line[i + 1] == '=') ? 2 : 1;
                break;
            case '+': case '-': case '*': case '/': case '\\': case '&': case '^':
            case '=': case '(': case ')': case ',': case '.': case ':':
                len = 1;
                break;
            default:
                return "Invalid character";
            }
            tokens.push_back({Tok::Op, line.substr(i, len)});
            i += len;
        }
    }
    return "";
}

std::string decodeString(std::string_view literal) {
    std::string value;
    if (literal.size() < 2)
        return value;
    value.reserve(literal.size() - 2);
    for (std::size_t i = 1; i + 1 < literal.size(); ++i) {
        value.push_back(literal[i]);
        if (literal[i] == '"')
            ++i;  // skip the second quote of a doubled pair
    }
    return value;
}

std::string lowerName(std::string_view name) {
    std::string lower(name);
    for (char& ch : lower)
        if (ch >= 'A' && ch <= 'Z')
            ch = static_cast<char>(ch - 'A' + 'a');
    return lower;
}

}  // namespace klvr
