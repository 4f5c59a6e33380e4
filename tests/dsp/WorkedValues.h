// The rows of worked_values.txt, whose comments explain their numbers.
#pragma once

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

using WorkedRow = std::vector<double>;

// Those of one kind; empty where there is no such file.
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
