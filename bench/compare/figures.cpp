#include "compare/figures.h"

#include <cmath>
#include <stdexcept>

#include "measure.h"

namespace zek::bench {

void Figures::Add(const std::string& job, const std::string& quantity, double value) {
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

double Exponent(double smallSize, double smallTime, double largeSize, double largeTime) {
    return std::log(largeTime / smallTime) / std::log(largeSize / smallSize);
}

}  // namespace zek::bench
