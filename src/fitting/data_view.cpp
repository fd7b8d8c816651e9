#include "fitting/data_view.h"

#include <algorithm>
#include <cmath>

#include "env/paths.h"
#include "env/text.h"
#include "fitting/completed_fit.h"
#include "fitting/data_file.h"
#include "fitting/fit_error.h"
#include "fitting/fit_settings.h"
#include "fitting/models.h"
#include "fitting/number_text.h"

namespace quillet::fitting {

namespace {

// A whole number from 1 up, or 0.
int Count(const std::string& text) {
    const auto v = ParseNumber(text);
    return v && *v >= 1 && *v <= 1e8 && *v == static_cast<int>(*v) ? static_cast<int>(*v) : 0;
}

}  // namespace

DataViewContent ComputeDataView(const ResponseRecord& record, const std::string& folder) {
    DataViewContent view;
    const auto& a = record.Answers;
    const std::string file = Trim(a[1]);
    if (file.empty()) {
        view.dataMessage = "Question 1 names no data file yet.";
        return view;
    }
    const int first = Count(a[3]);
    const int count = Count(a[4]);
    if (first == 0 || count == 0) {
        view.dataMessage = "Questions 3 and 4 (first line, number of points) need whole numbers from 1 up.";
        return view;
    }
    DataPoints data;
    try {
        data = ReadDataPoints(JoinPath(folder, file), first, count);
    } catch (const FitInputError& e) {
        view.dataMessage = e.what();
        return view;
    }
    view.points = static_cast<int>(data.x.size());
    const std::size_t step = (data.x.size() + kMostPointsShown - 1) / kMostPointsShown;
    for (std::size_t i = 0; i < data.x.size(); i += std::max<std::size_t>(step, 1)) {
        view.x.push_back(data.x[i]);
        view.y.push_back(data.y[i]);
    }

    try {
        const FitSettings settings = FitSettingsOf(record);
        const Model model(*FindModelKind(settings.modelId), settings.terms);
        const std::vector<double> p = StartValues(model, settings);
        const auto [lo, hi] = std::minmax_element(data.x.begin(), data.x.end());
        for (int i = 0; i < kCurveSamples; ++i) {
            const double x = *lo + (*hi - *lo) * i / (kCurveSamples - 1);
            const double y = model.Value(p.data(), x / settings.xnorm, nullptr) * settings.ynorm;
            if (!std::isfinite(y)) continue;
            view.startX.push_back(x);
            view.startY.push_back(y);
        }
    } catch (const FitInputError& e) {
        view.curveMessage = std::string("No starting curve: ") + e.what();
    }
    return view;
}

}  // namespace quillet::fitting
