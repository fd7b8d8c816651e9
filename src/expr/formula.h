#pragma once
// A parsed formula: the flat token list and the order in which the evaluator visits it.
// There is no tree; evaluation collapses neighbouring entries of the list in place.
#include <cstdint>
#include <string>
#include <vector>

namespace quillet::expr {

enum class TokenKind : std::uint8_t {
    Number,    // digits and "."; never a step, read directly by its neighbours
    Name,      // a variable or constant
    Opener,    // a function name with its "(", e.g. "sin("
    Open,      // a plain "("
    Close,     // ")"
    Comma,     // an empty entry that keeps function arguments apart
    Operator,  // + - ~ * / \ % ^ > <   ("~" is the unary minus)
};

struct Token {
    TokenKind kind = TokenKind::Comma;
    std::string text;  // as written, without blanks; empty for a comma and a number
    // A number literal's value, converted once; `numberError` is raised when the literal is
    // read and could not be converted (1103 malformed, 6 too large).
    double number = 0;
    int numberError = 0;

    char op() const { return text.empty() ? '\0' : text[0]; }
    bool IsUnaryMinus() const { return kind == TokenKind::Operator && text == "~"; }
};

struct ParsedFormula {
    std::vector<Token> tokens;
    // Token indexes by falling priority, left to right within one priority.
    std::vector<std::int32_t> order;
};

}  // namespace quillet::expr
