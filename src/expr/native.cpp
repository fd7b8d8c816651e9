#include "expr/native.h"

#include <atomic>

#include "expr/program.h"

namespace quillet::expr {

namespace {
std::atomic<bool> allowed{true};
}  // namespace

void AllowNativeCode(bool allow) { allowed = allow; }
bool NativeCodeAllowed() { return allowed; }

}  // namespace quillet::expr

#ifdef QUILLET_NATIVE_FORMULAS
#include <asmjit/x86.h>

#include <optional>
#include <vector>

#include "expr/checked_math.h"
#include "expr/functions.h"

namespace quillet::expr {

namespace {

using namespace asmjit;

// Never destroyed: a formula object that lives as long as the program releases its code last.
asmjit::JitRuntime& Runtime() {
    static auto* runtime = new asmjit::JitRuntime;
    return *runtime;
}

// The steps' library calls, each exactly as the interpreter makes it without checks.
double NativeExp(double a) { return LibExp(a); }
double NativeLog(double a) { return LibLog(a); }
double NativeSin(double a) { return std::sin(a); }
double NativeCos(double a) { return std::cos(a); }
double NativeTan(double a) { return std::tan(a); }
double NativeAtn(double a) { return Atn(a); }
double NativeSgn(double a) { return Sgn(a); }
double NativeSquare(double a) { return SquareUnchecked(a); }
double NativePow(double a, double b) { return PowUnchecked(a, b); }
double NativeTimesTenTo(double a, double b) { return a * PowUnchecked(10, b); }
double NativeTimesTenToMinus(double a, double b) { return a * PowUnchecked(10, -b); }
// A step that raises leaves the invalid-operation flag instead: no exception may pass through
// the machine code, and the solve with every check that the flag brings about raises it.
double Raised() {
    volatile double zero = 0;
    return zero / zero;
}
// Integer division and remainder, which raise on their own.
template <double (*f)(double, double)>
double NativeRaising(double a, double b) {
    try {
        return f(a, b);
    } catch (...) {
        return Raised();
    }
}
// Formulas that draw random numbers never become machine code, so no function draws from this.
SingleRandom unused;
template <bool kDegrees>
double NativeCall(FunctionFn fn, double x, double y) {
    try {
        return fn(FunctionCall{x, y, kDegrees, unused});
    } catch (...) {
        return Raised();
    }
}
double NativeSinCos(double a, double* cosine) {
    double sine = 0;
    LibSinCos(a, sine, *cosine);
    return sine;
}

bool HasMachineForm(Op op) {
    switch (op) {
        case Op::Random:
        case Op::CheckVariable:
        case Op::Raise: return false;
        default: return true;
    }
}

// Writes one function over the registers. A register the steps write lives in a processor
// register from then on; the others (inputs, literals, constants) are read from memory once.
class Writer {
public:
    Writer(const Program& p, bool degrees) : p_(p), degrees_(degrees), values_(p.registers.size()) {}

    bool Write(CodeHolder& code) {
        x86::Compiler cc(&code);
        cc_ = &cc;
        FuncNode* fn = cc.addFunc(FuncSignatureT<double, const double*, double*>(CallConvId::kHost));
        x86::Gp values = cc.newIntPtr("values");
        base_ = cc.newIntPtr("registers");
        fn->setArg(0, values);
        fn->setArg(1, base_);
        const x86::Xmm finite = ReadInputs(values);
        for (const Step& s : p_.unchecked) {
            if (s.op == Op::End) {
                // Times one (exactly the solution) when every input is finite, else not a number.
                x86::Xmm one = Copy(finite);
                cc.addsd(one, Constant(1.0));
                x86::Xmm y = Copy(Value(s.a));
                cc.mulsd(y, one);
                cc.ret(y);
                break;
            }
            if (!HasMachineForm(s.op)) return false;
            values_[s.out] = Produce(s);
        }
        cc.endFunc();
        return cc.finalize() == kErrorOk;
    }

private:
    // Each input from its slot, and the sum of the inputs times zero: zero when they are all
    // finite, not a number otherwise. Checked at the end: a branch here cost more.
    x86::Xmm ReadInputs(const x86::Gp& values) {
        x86::Xmm sum = cc_->newXmmSd();
        cc_->xorpd(sum, sum);
        for (const Program::Input& in : p_.inputs) {
            x86::Xmm v = cc_->newXmmSd();
            cc_->movsd(v, x86::ptr(values, static_cast<std::int32_t>(in.slot.index * sizeof(double))));
            values_[in.reg] = v;
            x86::Xmm zero = Copy(v);
            cc_->mulsd(zero, Constant(0.0));
            cc_->addsd(sum, zero);
        }
        return sum;
    }

    x86::Xmm Value(std::uint32_t reg) {
        if (!values_[reg]) {
            x86::Xmm v = cc_->newXmmSd();
            cc_->movsd(v, x86::ptr(base_, static_cast<std::int32_t>(reg * sizeof(double))));
            values_[reg] = v;
        }
        return *values_[reg];
    }

    x86::Xmm Copy(const x86::Xmm& from) {
        x86::Xmm v = cc_->newXmmSd();
        cc_->movapd(v, from);
        return v;
    }

    x86::Mem Constant(double value) { return cc_->newConst(ConstPoolScope::kLocal, &value, sizeof value); }
    x86::Mem SignMask(std::uint64_t bits) {
        const std::uint64_t both[2] = {bits, bits};
        return cc_->newConst(ConstPoolScope::kLocal, both, sizeof both);
    }

    x86::Xmm Call(double (*f)(double), const x86::Xmm& a) {
        InvokeNode* call = nullptr;
        x86::Xmm out = cc_->newXmmSd();
        cc_->invoke(&call, imm(reinterpret_cast<void*>(f)), FuncSignatureT<double, double>(CallConvId::kHost));
        call->setArg(0, a);
        call->setRet(0, out);
        return out;
    }
    x86::Xmm Call(double (*f)(double, double), const x86::Xmm& a, const x86::Xmm& b) {
        InvokeNode* call = nullptr;
        x86::Xmm out = cc_->newXmmSd();
        cc_->invoke(&call, imm(reinterpret_cast<void*>(f)), FuncSignatureT<double, double, double>(CallConvId::kHost));
        call->setArg(0, a);
        call->setArg(1, b);
        call->setRet(0, out);
        return out;
    }

    // Arguments are made before the call: what they emit must come ahead of it.
    x86::Xmm CallThroughTable(const Step& s) {
        const x86::Xmm x = Value(s.a), y = Value(s.b);
        x86::Gp fn = cc_->newIntPtr();
        cc_->mov(fn, imm(reinterpret_cast<void*>(s.fn)));
        InvokeNode* call = nullptr;
        x86::Xmm out = cc_->newXmmSd();
        auto* target = degrees_ ? &NativeCall<true> : &NativeCall<false>;
        cc_->invoke(&call, imm(reinterpret_cast<void*>(target)),
                    FuncSignatureT<double, void*, double, double>(CallConvId::kHost));
        call->setArg(0, fn);
        call->setArg(1, x);
        call->setArg(2, y);
        call->setRet(0, out);
        return out;
    }

    // The angle in radians, as the interpreter turns degrees into it.
    x86::Xmm Angle(const x86::Xmm& a) {
        if (!degrees_) return a;
        x86::Xmm v = Copy(a);
        cc_->mulsd(v, Constant(kR));
        return v;
    }

    x86::Xmm SinCos(const Step& s) {
        const x86::Xmm angle = Angle(Value(s.a));
        x86::Gp cosine = cc_->newIntPtr();
        cc_->lea(cosine, x86::ptr(base_, static_cast<std::int32_t>(s.b * sizeof(double))));
        InvokeNode* call = nullptr;
        x86::Xmm out = cc_->newXmmSd();
        cc_->invoke(&call, imm(reinterpret_cast<void*>(&NativeSinCos)),
                    FuncSignatureT<double, double, double*>(CallConvId::kHost));
        call->setArg(0, angle);
        call->setArg(1, cosine);
        call->setRet(0, out);
        values_[s.b].reset();  // read back from memory where it was written
        return out;
    }

    x86::Xmm Produce(const Step& s) {
        // a op b into a copy of a: the steps' registers are never overwritten.
        auto arithmetic = [&](auto emit) {
            x86::Xmm v = Copy(Value(s.a));
            emit(v, Value(s.b));
            return v;
        };
        x86::Compiler& cc = *cc_;
        switch (s.op) {
            case Op::Add: return arithmetic([&](const x86::Xmm& v, const x86::Xmm& b) { cc.addsd(v, b); });
            case Op::Sub: return arithmetic([&](const x86::Xmm& v, const x86::Xmm& b) { cc.subsd(v, b); });
            case Op::Mul: return arithmetic([&](const x86::Xmm& v, const x86::Xmm& b) { cc.mulsd(v, b); });
            case Op::Div: return arithmetic([&](const x86::Xmm& v, const x86::Xmm& b) { cc.divsd(v, b); });
            // minsd and maxsd keep their second operand unless the first compares less (more).
            case Op::Min: return arithmetic([&](const x86::Xmm& v, const x86::Xmm& b) { cc.minsd(v, b); });
            case Op::Max: return arithmetic([&](const x86::Xmm& v, const x86::Xmm& b) { cc.maxsd(v, b); });
            case Op::IntDiv: return Call(&NativeRaising<IntDiv>, Value(s.a), Value(s.b));
            case Op::IntMod: return Call(&NativeRaising<IntMod>, Value(s.a), Value(s.b));
            case Op::Call: return CallThroughTable(s);
            case Op::Pow: return Call(&NativePow, Value(s.a), Value(s.b));
            case Op::Square: return Call(&NativeSquare, Value(s.a));
            case Op::TimesTenTo: return Call(&NativeTimesTenTo, Value(s.a), Value(s.b));
            case Op::TimesTenToMinus: return Call(&NativeTimesTenToMinus, Value(s.a), Value(s.b));
            case Op::Negate: {
                x86::Xmm v = Copy(Value(s.a));
                cc_->xorpd(v, SignMask(0x8000000000000000u));
                return v;
            }
            case Op::Abs: {
                x86::Xmm v = Copy(Value(s.a));
                cc_->andpd(v, SignMask(0x7FFFFFFFFFFFFFFFu));
                return v;
            }
            case Op::Sqr: {
                x86::Xmm v = cc_->newXmmSd();
                cc_->sqrtsd(v, Value(s.a));
                return v;
            }
            case Op::Exp: return Call(&NativeExp, Value(s.a));
            case Op::Log: return Call(&NativeLog, Value(s.a));
            case Op::Sgn: return Call(&NativeSgn, Value(s.a));
            case Op::Sin: return Call(&NativeSin, Angle(Value(s.a)));
            case Op::Cos: return Call(&NativeCos, Angle(Value(s.a)));
            case Op::Tan: return Call(&NativeTan, Angle(Value(s.a)));
            case Op::Atn: {
                x86::Xmm v = Call(&NativeAtn, Value(s.a));
                if (degrees_) cc_->mulsd(v, Constant(kD));
                return v;
            }
            case Op::SinCos: return SinCos(s);
            default: return Value(s.a);  // not reached: HasMachineForm turned the others away
        }
    }

    const Program& p_;
    const bool degrees_;
    x86::Compiler* cc_ = nullptr;
    x86::Gp base_;
    std::vector<std::optional<x86::Xmm>> values_;
};

}  // namespace

NativeCode::~NativeCode() { Runtime().release(fn_); }

bool NativeCodeAvailable() { return true; }

std::shared_ptr<const NativeCode> MakeNativeCode(const Program& program, bool degrees) {
    CodeHolder code;
    if (code.init(Runtime().environment()) != kErrorOk) return nullptr;
    if (!Writer(program, degrees).Write(code)) return nullptr;
    NativeFn fn = nullptr;
    if (Runtime().add(&fn, &code) != kErrorOk) return nullptr;
    return std::make_shared<const NativeCode>(fn);
}

}  // namespace quillet::expr

#else

namespace quillet::expr {
NativeCode::~NativeCode() = default;
bool NativeCodeAvailable() { return false; }
std::shared_ptr<const NativeCode> MakeNativeCode(const Program&, bool) { return nullptr; }
}  // namespace quillet::expr

#endif
