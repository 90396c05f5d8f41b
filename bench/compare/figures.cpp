#include "compare/figures.h"

#include <cmath>
#include <stdexcept>

#include "measure.h"

namespace zek::bench {

void Figures::Add(const std::string& job, const std::string& quantity, double value) {
    if (!std::isfinite(value) || value <= 0) {
        throw std::range_error(quantity + " of " + job + " is " + std::to_string(value) + ", which is no figure");
    }
    values_[{job, quantity}].push_back(value);
}

bool Figures::Has(const std::string& job, const std::string& quantity) const {
    return values_.contains({job, quantity});
}

double Figures::Get(const std::string& job, const std::string& quantity) const {
    const auto found = values_.find({job, quantity});
    if (found == values_.end()) throw std::out_of_range(quantity + " of " + job + " was not measured");
    return Median(found->second);
}

double Growth(const FiguresBySize& sizes, const std::string& job, const std::string& quantity) {
    const auto& [small, first] = *sizes.begin();
    const auto& [large, last] = *sizes.rbegin();
    return std::log(last.Get(job, quantity) / first.Get(job, quantity)) / std::log(1.0 * large / small);
}

}  // namespace zek::bench
