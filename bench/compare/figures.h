/// Measured numbers, by what was run and what was measured of it. Relies on measure.h.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace zek::bench {

/// Every number is given several times, once for each run, and asked for as the median.
class Figures {
public:
    /// Throws std::range_error for what is no number above zero: nothing that is measured here is less.
    void Add(const std::string& job, const std::string& quantity, double value);

    bool Has(const std::string& job, const std::string& quantity) const;

    /// Throws std::out_of_range for what was not measured.
    double Get(const std::string& job, const std::string& quantity) const;

private:
    std::map<std::pair<std::string, std::string>, std::vector<double>> values_;
};

/// What was measured of the boards of each size (sensors), smallest first.
using FiguresBySize = std::map<unsigned, Figures>;

/// How a quantity of a job grows from the smallest to the largest size, as an exponent: 1 where twice the size takes
/// twice as much. There are at least two sizes.
double Growth(const FiguresBySize& sizes, const std::string& job, const std::string& quantity);

}  // namespace zek::bench
