#include "model/form_model.h"

namespace quillet {

TextBox* AnswerBox(FormModel& f, int question) {
    switch (question) {
        case 1: return &f.timeData;
        case 3: return &f.Line0;
        case 4: return &f.nPoints;
        case 5: return &f.nTerms;
        case 6: return &f.xnorm;
        case 7: return &f.ynorm;
        case 8: return &f.Y0;
        case 9: return &f.Amplitude;
        case 10: return &f.PW50;
        case 11: return &f.PeakLocations;
        case 12: return &f.Amplitude2;
        default: return nullptr;
    }
}

const TextBox* AnswerBox(const FormModel& f, int question) {
    return AnswerBox(const_cast<FormModel&>(f), question);
}

TextBox& SolverBox(FormModel& f, int index) {
    switch (index) {
        case 1: return f.Remax;
        case 2: return f.Detail;
        case 3: return f.Delta;
        case 4: return f.PreDamp;
        case 5: return f.Damp;
        default: return f.Rho;
    }
}

const TextBox& SolverBox(const FormModel& f, int index) { return SolverBox(const_cast<FormModel&>(f), index); }

}  // namespace quillet
