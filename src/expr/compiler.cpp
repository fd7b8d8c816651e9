#include "expr/compiler.h"

#include <cmath>
#include <cstring>
#include <map>

#include "expr/errors.h"
#include "expr/flat_index.h"

namespace quillet::expr {

namespace {

// Ends the walk: what the collapse would raise at this point.
struct Failure {
    int number;
    std::string description;
};

// One entry of the work array: a token not yet evaluated, a partial result in a register,
// or consumed.
struct Entry {
    enum class State : std::uint8_t { Empty, Token, Number };
    State state = State::Empty;
    std::int32_t token = -1;
    std::uint32_t reg = 0;

    static Entry Result(std::uint32_t reg) { return Entry{State::Number, -1, reg}; }
};

Op BinaryOp(char op) {
    switch (op) {
        case '+': return Op::Add;
        case '-': return Op::Sub;
        case '*': return Op::Mul;
        case '/': return Op::Div;
        case '\\': return Op::IntDiv;
        case '%': return Op::IntMod;
        case '^': return Op::Pow;
        case '>': return Op::TimesTenTo;
        case '<': return Op::TimesTenToMinus;
        default: throw Failure{eqerr::InvalidEquation, "Invalid Equation"};
    }
}

// Functions common in fitted models have an op of their own.
Op OpOf(std::string_view opener) {
    if (opener == "exp(") return Op::Exp;
    if (opener == "sin(") return Op::Sin;
    if (opener == "cos(") return Op::Cos;
    if (opener == "abs(") return Op::Abs;
    if (opener == "sqr(") return Op::Sqr;
    if (opener == "log(" || opener == "ln(") return Op::Log;
    if (opener == "atn(" || opener == "arctan(") return Op::Atn;
    if (opener == "tan(") return Op::Tan;
    if (opener == "sgn(") return Op::Sgn;
    if (opener == "min(") return Op::Min;
    if (opener == "max(") return Op::Max;
    return Op::Call;
}

// Steps whose value depends on their operands alone (and the angle unit, fixed during a solve).
// One that repeats an earlier step on the same registers gives the same value and would have
// raised at the earlier one already, so the earlier one's register serves both. Sin and cos
// pair up their own way.
bool Reusable(Op op) {
    return op <= Op::Negate || op == Op::Exp || (op >= Op::Abs && op <= Op::Sgn) || op == Op::Min || op == Op::Max;
}

// Plus or minus 2^k with both it and its reciprocal normal numbers.
bool IsPowerOfTwo(double v) {
    int exponent = 0;
    return std::fabs(std::frexp(v, &exponent)) == 0.5 && exponent >= -1020 && exponent <= 1022;
}

class Compiler {
public:
    Compiler(const ParsedFormula& f, Variables& v);
    Program Run();

private:
    const Token& TokenAt(int pos) const { return f_.tokens[static_cast<std::size_t>(work_[Ix(pos)].token)]; }
    static std::size_t Ix(int pos) { return static_cast<std::size_t>(pos); }
    bool Filled(int pos) const { return work_[Ix(pos)].state != Entry::State::Empty; }
    bool IsPendingMinus(int pos) const;
    int NextFilled(int pos) const;
    int PreviousFilled(int pos) const;
    std::uint32_t Register(double initial = 0, bool constant = false);
    std::uint32_t Arithmetic(Op op, std::uint32_t a, std::uint32_t b);
    std::uint32_t Emit(Op op, std::uint32_t a = 0, std::uint32_t b = 0, FunctionFn fn = nullptr);
    std::uint32_t Message(std::string text);
    std::uint32_t Read(int pos);
    std::uint32_t ReadOperand(int pos);
    void NegateChain(int pos);
    void Binary(int pos, char op);
    int ClosingOf(std::size_t step) const;
    void Group(int pos, int close);
    void Function(int pos, int close);
    std::uint32_t Trigonometric(Op op, std::uint32_t x, std::uint32_t y, FunctionFn fn);
    void Name(int pos);
    struct Variable {
        std::uint32_t reg;
        std::uint32_t slot;
        std::uint32_t message;  // "Undefined Variable: " and the name
    };
    const Variable& VariableNamed(const std::string& name);
    void Collapse();

    const ParsedFormula& f_;
    Variables& variables_;
    std::vector<Entry> work_;
    Program p_;
    std::vector<bool> constant_;  // per register: fixed by the formula alone
    FlatIndex constantsByBits_;  // one register per constant value
    FlatIndex reusable_;         // a reusable step's register by its op and operands
    std::map<std::string, Variable, std::less<>> variablesByName_;
    // A Sin or Cos step by its argument and op, until the other of the two joins it.
    std::map<std::pair<std::uint32_t, Op>, std::size_t> trigonometric_;
    std::uint32_t result_ = 0;  // the register of the solution
};

Compiler::Compiler(const ParsedFormula& f, Variables& v) : f_(f), variables_(v) {
    work_.resize(f.tokens.size());
    p_.steps.reserve(f.order.size() + 1);
    p_.registers.reserve(f.tokens.size());
    for (std::size_t i = 0; i < f.tokens.size(); ++i)
        if (f.tokens[i].kind != TokenKind::Comma)
            work_[i] = Entry{Entry::State::Token, static_cast<std::int32_t>(i), 0};
}

bool Compiler::IsPendingMinus(int pos) const {
    return pos >= 0 && work_[Ix(pos)].state == Entry::State::Token && TokenAt(pos).IsUnaryMinus();
}

int Compiler::NextFilled(int pos) const {
    for (int p = pos + 1; p < static_cast<int>(work_.size()); ++p)
        if (Filled(p)) return p;
    return -1;
}

int Compiler::PreviousFilled(int pos) const {
    for (int p = pos - 1; p >= 0; --p)
        if (Filled(p)) return p;
    return -1;
}

// A constant already held keeps its register, so that steps on equal constants look equal.
std::uint32_t Compiler::Register(double initial, bool constant) {
    if (constant) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &initial, sizeof bits);
        const auto next = static_cast<std::uint32_t>(p_.registers.size());
        if (const std::uint32_t reg = constantsByBits_.FindOrAdd(bits, next); reg != next) return reg;
        if (!std::isfinite(initial)) p_.checksAtEnd = false;
    }
    p_.registers.push_back(initial);
    constant_.push_back(constant);
    return static_cast<std::uint32_t>(p_.registers.size() - 1);
}

// Arithmetic on constants is done once, here, by the same code a step runs. One that raises
// stays a step, so that its error comes at its turn.
std::uint32_t Compiler::Arithmetic(Op op, std::uint32_t a, std::uint32_t b) {
    if (op == Op::Pow && constant_[b] && p_.registers[b] == 2) op = Op::Square;
    // Dividing by a power of two is multiplying by its reciprocal, to the last bit.
    if (op == Op::Div && constant_[b] && IsPowerOfTwo(p_.registers[b])) {
        op = Op::Mul;
        b = Register(1 / p_.registers[b], true);
    }
    if (constant_[a] && constant_[b]) {
        try {
            return Register(expr::Arithmetic(op, p_.registers[a], p_.registers[b]), true);
        } catch (const RuntimeError&) {
        }
    }
    return Emit(op, a, b);
}

std::uint32_t Compiler::Emit(Op op, std::uint32_t a, std::uint32_t b, FunctionFn fn) {
    // Six bits of op and 29 of each register make the key; beyond that, steps are not shared.
    static_assert(static_cast<int>(Op::End) < 64);
    if (Reusable(op) && a < (1u << 29) && b < (1u << 29)) {
        const std::uint64_t key = std::uint64_t{static_cast<std::uint8_t>(op)} << 58 | std::uint64_t{a} << 29 | b;
        const auto next = static_cast<std::uint32_t>(p_.registers.size());
        if (const std::uint32_t reg = reusable_.FindOrAdd(key, next); reg != next) return reg;
    }
    const std::uint32_t out = op == Op::CheckVariable ? 0 : Register();
    p_.steps.push_back(Step{op, Fresh::None, 0, out, a, b, fn});
    return out;
}

std::uint32_t Compiler::Message(std::string text) {
    p_.messages.push_back(std::move(text));
    return static_cast<std::uint32_t>(p_.messages.size() - 1);
}

// A filled entry as a number: a partial result or a number literal; anything else is invalid.
std::uint32_t Compiler::Read(int pos) {
    if (pos < 0) throw Failure{eqerr::InvalidEquation, "Invalid Equation"};
    const Entry& e = work_[Ix(pos)];
    if (e.state == Entry::State::Number) return e.reg;
    const Token& t = TokenAt(pos);
    if (t.kind != TokenKind::Number || t.numberError == eqerr::InvalidEquation)
        throw Failure{eqerr::InvalidEquation, "Invalid Equation"};
    if (t.numberError != 0) throw Failure{t.numberError, {}};
    return Register(t.number, true);
}

// "^", ">" and "<" outrank the unary minus, so their right operand may still be a "~":
// it is evaluated first, so that 2^-1 is 0.5 and 1>-3 is 0.001.
std::uint32_t Compiler::ReadOperand(int pos) {
    if (IsPendingMinus(pos)) NegateChain(pos);
    return Read(pos);
}

// Negates the operand of the "~" at pos, first evaluating any "~" behind it (--2 is 2).
void Compiler::NegateChain(int pos) {
    std::vector<int> chain{pos};
    for (int p = NextFilled(pos); IsPendingMinus(p); p = NextFilled(p)) chain.push_back(p);
    for (auto it = chain.rbegin(); it != chain.rend(); ++it) {
        int operand = NextFilled(*it);
        const std::uint32_t v = Read(operand);
        work_[Ix(*it)] = Entry::Result(Arithmetic(Op::Negate, v, v));
        work_[Ix(operand)] = Entry{};
    }
}

void Compiler::Binary(int pos, char op) {
    int a = PreviousFilled(pos);
    int b = NextFilled(pos);
    const std::uint32_t x = ReadOperand(a);
    const std::uint32_t y = ReadOperand(b);
    work_[Ix(pos)] = Entry::Result(Arithmetic(BinaryOp(op), x, y));
    work_[Ix(a)] = Entry{};
    work_[Ix(b)] = Entry{};
}

// The step after an opening parenthesis is its ")": both carry the same priority, and
// within a priority the openings and closings of one depth alternate from left to right.
int Compiler::ClosingOf(std::size_t step) const {
    if (step + 1 >= f_.order.size()) throw Failure{eqerr::InvalidEquation, "Invalid Equation"};
    int close = f_.order[step + 1];
    if (work_[Ix(close)].state != Entry::State::Token || TokenAt(close).kind != TokenKind::Close)
        throw Failure{eqerr::InvalidEquation, "Invalid Equation"};
    return close;
}

// A parenthesis takes the place of its content: no step, the entry moves.
void Compiler::Group(int pos, int close) {
    int inner = NextFilled(pos);
    if (inner >= 0 && inner < close) {
        work_[Ix(pos)] = work_[Ix(inner)];
        work_[Ix(inner)] = Entry{};
    } else {
        work_[Ix(pos)] = Entry::Result(Register(0, true));
    }
    work_[Ix(close)] = Entry{};
}

// The first and the last argument are used; arguments between them stay where they are.
void Compiler::Function(int pos, int close) {
    const std::string& opener = TokenAt(pos).text;
    int first = NextFilled(pos);
    if (first < 0 || first >= close)
        throw Failure{eqerr::InvalidArguments, "Invalid arguments to function: " + opener + ")"};
    int last = PreviousFilled(close);
    const std::uint32_t x = Read(first);
    const std::uint32_t y = Read(last);
    FunctionFn fn = FindFunction(opener);
    if (!fn) throw Failure{eqerr::UndefinedFunction, "Sorry Undefined Function: " + opener + ")"};
    if (DrawsRandomNumbers(opener)) p_.checksAtEnd = false;
    work_[Ix(first)] = work_[Ix(last)] = work_[Ix(close)] = Entry{};
    const Op op = OpOf(opener);
    const bool trigonometric = op == Op::Sin || op == Op::Cos;
    work_[Ix(pos)] = Entry::Result(trigonometric ? Trigonometric(op, x, y, fn) : Emit(op, x, y, fn));
}

// sin and cos of one register come from one call at the first of the two. The second's result
// is thus written earlier, which no step can see: its register is new.
std::uint32_t Compiler::Trigonometric(Op op, std::uint32_t x, std::uint32_t y, FunctionFn fn) {
    const auto partner = trigonometric_.find({x, op == Op::Sin ? Op::Cos : Op::Sin});
    if (partner == trigonometric_.end()) {
        const std::uint32_t out = Emit(op, x, y, fn);
        trigonometric_.emplace(std::pair{x, op}, p_.steps.size() - 1);
        return out;
    }
    Step& first = p_.steps[partner->second];
    const std::uint32_t out = Register();
    first.b = op == Op::Cos ? out : first.out;
    first.out = op == Op::Sin ? out : first.out;
    first.op = Op::SinCos;
    trigonometric_.erase(partner);
    return out;
}

// A variable's value is read once per solve; each place that names it checks it is defined.
const Compiler::Variable& Compiler::VariableNamed(const std::string& name) {
    auto it = variablesByName_.find(name);
    if (it == variablesByName_.end()) {
        const Variable v{Register(), variables_.SlotOf(name).index, Message("Undefined Variable: " + name)};
        p_.inputs.push_back(Program::Input{VarSlot{v.slot}, v.reg});
        it = variablesByName_.emplace(name, v).first;
    }
    return it->second;
}

void Compiler::Name(int pos) {
    const std::string& name = TokenAt(pos).text;
    double constant = 0;
    std::uint32_t reg = 0;
    if (name == "rnd") {
        reg = Emit(Op::Random);
        p_.checksAtEnd = false;
    } else if (FindConstant(name, constant)) {
        reg = Register(constant, true);
    } else {
        const Variable& variable = VariableNamed(name);
        reg = variable.reg;
        Emit(Op::CheckVariable, variable.slot, variable.message);
    }
    work_[Ix(pos)] = Entry::Result(reg);
}

void Compiler::Collapse() {
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
            default: throw Failure{eqerr::InvalidEquation, "Invalid Equation"};
        }
    }
    result_ = Read(NextFilled(-1));
}

Program Compiler::Run() {
    try {
        Collapse();
    } catch (const Failure& f) {
        p_.steps.push_back(
            Step{Op::Raise, Fresh::None, 0, 0, static_cast<std::uint32_t>(f.number), Message(f.description)});
    }
    p_.steps.push_back(Step{Op::End, Fresh::None, 0, 0, result_});
    p_.Link();
    return std::move(p_);
}

}  // namespace

Program Compile(const ParsedFormula& formula, Variables& variables) { return Compiler(formula, variables).Run(); }

}  // namespace quillet::expr
