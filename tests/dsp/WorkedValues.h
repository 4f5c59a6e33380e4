// Reads worked_values.txt; the comments there explain its columns.
#pragma once

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

using WorkedRow = std::vector<double>;

// The rows of one kind; empty if the file is missing.
inline std::vector<WorkedRow> workedRows(const std::string& kind)
{
    std::vector<WorkedRow> rows;
    std::ifstream file(ZKR_WORKED_VALUES);
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string first;
        if (!(words >> first) || first != kind)
            continue;
        rows.emplace_back();
        for (double x; words >> x;)
            rows.back().push_back(x);
    }
    return rows;
}
