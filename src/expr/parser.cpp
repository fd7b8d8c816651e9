#include "expr/parser.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <utility>

#include "expr/errors.h"

namespace quillet::expr {

namespace {

// Priorities and the parenthesis level are 16-bit quantities: deeper nesting overflows.
int Checked16(int v) {
    if (v < std::numeric_limits<std::int16_t>::min() || v > std::numeric_limits<std::int16_t>::max())
        RaiseEq(err::Overflow);
    return v;
}

// The value only: a number's text is not needed again.
Token NumberToken(const std::string& text) {
    Token t;
    t.kind = TokenKind::Number;
    const char* last = text.data() + text.size();
    auto [end, ec] = std::from_chars(text.data(), last, t.number, std::chars_format::fixed);
    if (ec == std::errc::result_out_of_range) {
        // Too large when the whole part has a digit other than 0; otherwise too small: 0.
        const bool large = text.substr(0, text.find('.')).find_first_not_of('0') != std::string::npos;
        if (large) t.numberError = err::Overflow;
        t.number = 0;
    } else if (ec != std::errc() || end != last) {
        t.numberError = eqerr::InvalidEquation;  // "." alone, or a second "."
    }
    return t;
}

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
bool IsDigit(char c) { return (c >= '0' && c <= '9') || c == '.'; }

enum class Pending { Nothing, Name, Number };

class Tokenizer {
public:
    ParsedFormula Run(const std::string& formula);

private:
    void Add(Token t, int priority);
    void AddOperator(char op, int step);
    void Flush();
    void Letter(char c);
    void Digit(char c);
    void OpenParen();
    void CloseParen();
    void Comma();
    void Minus();
    std::vector<std::int32_t> EvaluationOrder() const;

    ParsedFormula out_;
    std::vector<std::int16_t> priorities_;
    std::string pending_;
    Pending kind_ = Pending::Nothing;
    int level_ = 0;
    bool afterOperand_ = false;
};

void Tokenizer::Add(Token t, int priority) {
    out_.tokens.push_back(std::move(t));
    priorities_.push_back(static_cast<std::int16_t>(Checked16(priority)));
}

void Tokenizer::AddOperator(char op, int step) {
    Flush();
    Add(Token{TokenKind::Operator, std::string(1, op)}, level_ + step);
    afterOperand_ = false;
}

void Tokenizer::Flush() {
    if (!pending_.empty()) {
        if (kind_ == Pending::Name)
            Add(Token{TokenKind::Name, pending_}, level_ + 6);
        else
            Add(NumberToken(pending_), 0);
    }
    pending_.clear();
    kind_ = Pending::Nothing;
}

void Tokenizer::Letter(char c) {
    if (kind_ == Pending::Number) AddOperator('*', 3);  // 2x is 2 * x
    pending_ += c;
    kind_ = Pending::Name;
    afterOperand_ = true;
}

void Tokenizer::Digit(char c) {
    if (kind_ == Pending::Nothing) kind_ = Pending::Number;
    pending_ += c;  // x2 stays one name
    afterOperand_ = true;
}

void Tokenizer::OpenParen() {
    if (kind_ == Pending::Name) {
        Add(Token{TokenKind::Opener, pending_ + "("}, level_ + 7);
        pending_.clear();
    } else {
        if (kind_ == Pending::Number) AddOperator('*', 3);  // 2(x+1) is 2 * (x+1)
        Add(Token{TokenKind::Open, "("}, level_ + 7);
    }
    level_ = Checked16(level_ + 7);
    kind_ = Pending::Nothing;
    afterOperand_ = false;
    Checked16(level_ + 7);  // the highest priority issued so far must fit as well
}

void Tokenizer::CloseParen() {
    Flush();
    Add(Token{TokenKind::Close, ")"}, level_);
    level_ = Checked16(level_ - 7);
    afterOperand_ = true;
}

void Tokenizer::Comma() {
    Flush();
    Add(Token{}, 0);
    afterOperand_ = false;
}

void Tokenizer::Minus() {
    if (afterOperand_)
        AddOperator('-', 1);
    else
        AddOperator('~', 4);
}

// Positions by falling priority, left to right within one priority; numbers and commas
// (priority 0) are left out. A counting sort: priorities are small numbers.
std::vector<std::int32_t> Tokenizer::EvaluationOrder() const {
    int highest = 0;
    for (std::int16_t p : priorities_) highest = std::max<int>(highest, p);
    std::vector<std::int32_t> start(static_cast<std::size_t>(highest) + 1, 0);  // by highest - p
    for (std::int16_t p : priorities_)
        if (p >= 1) ++start[static_cast<std::size_t>(highest - p)];
    std::int32_t total = 0;
    for (std::int32_t& s : start) total += std::exchange(s, total);
    std::vector<std::int32_t> order(static_cast<std::size_t>(total));
    for (std::size_t i = 0; i < priorities_.size(); ++i)
        if (priorities_[i] >= 1)
            order[static_cast<std::size_t>(start[static_cast<std::size_t>(highest - priorities_[i])]++)] =
                static_cast<std::int32_t>(i);
    return order;
}

ParsedFormula Tokenizer::Run(const std::string& formula) {
    out_.tokens.reserve(formula.size() / 2);
    priorities_.reserve(formula.size() / 2);
    for (char c : formula) {
        if (IsLetter(c)) Letter(c);
        else if (IsDigit(c)) Digit(c);
        else if (c == '(') OpenParen();
        else if (c == ')') CloseParen();
        else if (c == ',') Comma();
        else if (c == '+') AddOperator('+', 1);
        else if (c == '-') Minus();
        else if (c == '*' || c == '/' || c == '\\') AddOperator(c, 3);
        else if (c == '%') AddOperator(c, 2);
        else if (c == '^' || c == '>' || c == '<') AddOperator(c, 5);
        // Anything else, blanks included, is skipped inside a number or name too: "1 2" is 12.
    }
    Flush();
    if (level_ != 0) RaiseEq(eqerr::UnbalancedParenthesis, "Unbalanced parenthesis");
    out_.order = EvaluationOrder();
    return std::move(out_);
}

}  // namespace

void RewriteMod(std::string& formula) {
    std::size_t at = formula.find(" mod ");
    if (at == std::string::npos) return;
    std::string out;
    std::size_t from = 0;
    for (; at != std::string::npos; at = formula.find(" mod ", from)) {
        out.append(formula, from, at - from);
        out += '%';
        from = at + 5;
    }
    out.append(formula, from);
    formula = std::move(out);
}

ParsedFormula ParseFormula(const std::string& formula) {
    try {
        return Tokenizer().Run(formula);
    } catch (const RuntimeError& e) {
        if (e.number() == eqerr::UnbalancedParenthesis) throw;
        throw RuntimeError(e.number(), kParseSource, e.description());
    }
}

}  // namespace quillet::expr
