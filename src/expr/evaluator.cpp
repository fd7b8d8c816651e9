#include "expr/evaluator.h"

#include "expr/checked_math.h"
#include "expr/errors.h"
#include "expr/functions.h"

namespace quillet::expr {

namespace {

// One entry of the work array: a token not yet evaluated, a partial result, or consumed.
struct Entry {
    enum class State : std::uint8_t { Empty, Token, Number };
    State state = State::Empty;
    std::int32_t token = -1;
    double value = 0;

    static Entry Result(double v) { return Entry{State::Number, -1, v}; }
};

class Collapse {
public:
    Collapse(const ParsedFormula& f, const EvaluationContext& c);
    double Run();

private:
    const Token& TokenAt(int pos) const { return f_.tokens[static_cast<std::size_t>(work_[Ix(pos)].token)]; }
    static std::size_t Ix(int pos) { return static_cast<std::size_t>(pos); }
    bool Filled(int pos) const { return work_[Ix(pos)].state != Entry::State::Empty; }
    bool IsPendingMinus(int pos) const;
    int NextFilled(int pos) const;
    int PreviousFilled(int pos) const;
    double Read(int pos) const;
    double ReadOperand(int pos);
    void NegateChain(int pos);
    void Binary(int pos, char op);
    int ClosingOf(std::size_t step) const;
    void Group(int pos, int close);
    void Function(int pos, int close);
    void Name(int pos);

    const ParsedFormula& f_;
    const EvaluationContext& c_;
    std::vector<Entry> work_;
};

Collapse::Collapse(const ParsedFormula& f, const EvaluationContext& c) : f_(f), c_(c) {
    work_.resize(f.tokens.size());
    for (std::size_t i = 0; i < f.tokens.size(); ++i)
        if (f.tokens[i].kind != TokenKind::Comma)
            work_[i] = Entry{Entry::State::Token, static_cast<std::int32_t>(i), 0};
}

bool Collapse::IsPendingMinus(int pos) const {
    return pos >= 0 && work_[Ix(pos)].state == Entry::State::Token && TokenAt(pos).IsUnaryMinus();
}

int Collapse::NextFilled(int pos) const {
    for (int p = pos + 1; p < static_cast<int>(work_.size()); ++p)
        if (Filled(p)) return p;
    return -1;
}

int Collapse::PreviousFilled(int pos) const {
    for (int p = pos - 1; p >= 0; --p)
        if (Filled(p)) return p;
    return -1;
}

// A filled entry as a number: a partial result or a number literal; anything else is invalid.
double Collapse::Read(int pos) const {
    if (pos < 0) RaiseInvalidEquation();
    const Entry& e = work_[Ix(pos)];
    if (e.state == Entry::State::Number) return e.value;
    const Token& t = TokenAt(pos);
    if (t.kind != TokenKind::Number) RaiseInvalidEquation();
    if (t.numberError == eqerr::InvalidEquation) RaiseInvalidEquation();
    if (t.numberError != 0) RaiseEq(t.numberError);
    return t.number;
}

// "^", ">" and "<" outrank the unary minus, so their right operand may still be a "~":
// it is evaluated first, so that 2^-1 is 0.5 and 1>-3 is 0.001.
double Collapse::ReadOperand(int pos) {
    if (IsPendingMinus(pos)) NegateChain(pos);
    return Read(pos);
}

// Negates the operand of the "~" at pos, first evaluating any "~" behind it (--2 is 2).
void Collapse::NegateChain(int pos) {
    std::vector<int> chain{pos};
    for (int p = NextFilled(pos); IsPendingMinus(p); p = NextFilled(p)) chain.push_back(p);
    for (auto it = chain.rbegin(); it != chain.rend(); ++it) {
        int operand = NextFilled(*it);
        double v = Read(operand);
        work_[Ix(*it)] = Entry::Result(-v);
        work_[Ix(operand)] = Entry{};
    }
}

void Collapse::Binary(int pos, char op) {
    int a = PreviousFilled(pos);
    int b = NextFilled(pos);
    double x = ReadOperand(a);
    double y = ReadOperand(b);
    double r = 0;
    switch (op) {
        case '+': r = Add(x, y); break;
        case '-': r = Sub(x, y); break;
        case '*': r = Mul(x, y); break;
        case '/': r = Div(x, y); break;
        case '\\': r = IntDiv(x, y); break;
        case '%': r = IntMod(x, y); break;
        case '^': r = Pow(x, y); break;
        case '>': r = Mul(x, Pow(10, y)); break;
        case '<': r = Mul(x, Pow(10, -y)); break;
        default: RaiseInvalidEquation();
    }
    work_[Ix(pos)] = Entry::Result(r);
    work_[Ix(a)] = Entry{};
    work_[Ix(b)] = Entry{};
}

// The step after an opening parenthesis is its ")": both carry the same priority, and
// within a priority the openings and closings of one depth alternate from left to right.
int Collapse::ClosingOf(std::size_t step) const {
    if (step + 1 >= f_.order.size()) RaiseInvalidEquation();
    int close = f_.order[step + 1];
    if (work_[Ix(close)].state != Entry::State::Token || TokenAt(close).kind != TokenKind::Close)
        RaiseInvalidEquation();
    return close;
}

void Collapse::Group(int pos, int close) {
    int inner = NextFilled(pos);
    if (inner >= 0 && inner < close) {
        work_[Ix(pos)] = work_[Ix(inner)];
        work_[Ix(inner)] = Entry{};
    } else {
        work_[Ix(pos)] = Entry::Result(0);
    }
    work_[Ix(close)] = Entry{};
}

// The first and the last argument are used; arguments between them stay where they are.
void Collapse::Function(int pos, int close) {
    const std::string& opener = TokenAt(pos).text;
    int first = NextFilled(pos);
    if (first < 0 || first >= close)
        RaiseEq(eqerr::InvalidArguments, "Invalid arguments to function: " + opener + ")");
    int last = PreviousFilled(close);
    double x = Read(first);
    double y = Read(last);
    FunctionFn fn = FindFunction(opener);
    if (!fn) RaiseEq(eqerr::UndefinedFunction, "Sorry Undefined Function: " + opener + ")");
    double r = fn(FunctionCall{x, y, c_.degrees, c_.random});
    work_[Ix(first)] = work_[Ix(last)] = work_[Ix(close)] = Entry{};
    work_[Ix(pos)] = Entry::Result(r);
}

void Collapse::Name(int pos) {
    const std::string& name = TokenAt(pos).text;
    double v = 0;
    if (!FindConstant(name, c_.random, v)) {
        const double* var = c_.variables.Find(name);
        if (!var) RaiseEq(eqerr::UndefinedVariable, "Undefined Variable: " + name);
        v = *var;
    }
    work_[Ix(pos)] = Entry::Result(v);
}

double Collapse::Run() {
    for (std::size_t step = 0; step < f_.order.size(); ++step) {
        int pos = f_.order[step];
        // A "~" already taken as the operand of a higher step leaves its entry consumed.
        if (work_[Ix(pos)].state != Entry::State::Token) continue;
        const Token& t = TokenAt(pos);
        switch (t.kind) {
            case TokenKind::Operator:
                if (t.IsUnaryMinus())
                    NegateChain(pos);
                else
                    Binary(pos, t.op());
                break;
            case TokenKind::Open:
            case TokenKind::Opener: {
                int close = ClosingOf(step);
                ++step;  // the ")" is taken together with its opening
                if (t.kind == TokenKind::Open)
                    Group(pos, close);
                else
                    Function(pos, close);
                break;
            }
            case TokenKind::Name: Name(pos); break;
            default: RaiseInvalidEquation();
        }
    }
    return Read(NextFilled(-1));
}

}  // namespace

double Evaluate(const ParsedFormula& formula, const EvaluationContext& context) {
    return Collapse(formula, context).Run();
}

}  // namespace quillet::expr
