#pragma once
// One term of each series model: value at u, and the derivatives by its parameters
// (in the order of the model's parameter groups) when dq is given.

namespace quillet::fitting::terms {

double Lorentzian(int term, const double* q, double u, double* dq);          // A, PW50, t0
double ModifiedLorentzian(int term, const double* q, double u, double* dq);  // A, PW50, t0, B
double BellCurve(int term, const double* q, double u, double* dq);           // T0, A, B
double Exponential(int term, const double* q, double u, double* dq);         // A, B
double Power(int term, const double* q, double u, double* dq);               // A
double Sine(int term, const double* q, double u, double* dq);                // A, B, C
double SineExponential(int term, const double* q, double u, double* dq);     // A, B, C, D

}  // namespace quillet::fitting::terms
