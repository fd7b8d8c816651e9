#pragma once
// A formula solved again and again runs as machine code made for it: the steps' values stay in
// the processor's registers and no step is dispatched. The code does what the steps do without
// checks, in the same order and with the same library calls, so it gives the same bits; faults
// are read from the processor's flags afterwards, as a solve checking at the end does.
#include <memory>

namespace quillet::expr {

struct Program;

// Reads the inputs from the variables' values by slot and the literals from the program's
// registers, writes only where a step that gives two values puts its second, and returns the
// solution: not a number when an input is not finite.
using NativeFn = double (*)(const double* values, double* registers);

class NativeCode {
public:
    explicit NativeCode(NativeFn fn) : fn_(fn) {}
    ~NativeCode();
    NativeCode(const NativeCode&) = delete;
    NativeCode& operator=(const NativeCode&) = delete;
    double operator()(const double* values, double* registers) const { return fn_(values, registers); }

private:
    NativeFn fn_;
};

// False where this build makes no machine code: other processors, or built without the
// assembler library.
bool NativeCodeAvailable();

// Whether formulas solved often become machine code from now on (they do unless turned off);
// tests turn it off to have the interpreter's outcomes to compare with.
void AllowNativeCode(bool allowed);
bool NativeCodeAllowed();

// Machine code for the program's steps without variable checks, for one angle unit; null when
// a step has no machine form (random numbers, errors the compiler found) or the code could not
// be made.
std::shared_ptr<const NativeCode> MakeNativeCode(const Program& program, bool degrees);

}  // namespace quillet::expr
