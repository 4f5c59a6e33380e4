// Reads renders.txt; its head explains the format.
#pragma once

#include <cstdio>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

struct Render {
    struct Change {
        int block;
        std::string title;
        float value;
    };
    struct Row {
        std::size_t frame;
        std::vector<double> channels;
    };
    std::string text;  // its lines before the output, for messages
    double rate, amplitude;
    int block, frames, in, out;
    unsigned seed;
    std::vector<Change> changes;
    std::vector<Row> samples;
    std::vector<double> absolute;  // per channel
};

// Empty if the file is missing; reading ends at a line of unknown kind.
inline std::vector<Render> readRenders(const char* path)
{
    std::vector<Render> renders;
    std::map<std::string, std::vector<Render::Change>> settings;
    std::vector<Render::Change>* listed = nullptr;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string kind, name;
        words >> kind;
        const auto numbers = [&] {
            std::vector<double> list;
            for (double x; words >> x;)
                list.push_back(x);
            return list;
        };
        if (kind == "settings") {
            words >> name;
            listed = &settings[name];
        } else if (kind == "render") {
            listed = nullptr;
            Render& r = renders.emplace_back();
            if (std::sscanf(
                    line.c_str(),
                    "render %*s rate=%lf block=%d frames=%d seed=%u amplitude=%lf in=%d out=%d",
                    &r.rate, &r.block, &r.frames, &r.seed, &r.amplitude, &r.in, &r.out)
                != 7)
                break;
            r.text = line;
        } else if (listed) {
            listed->push_back({0, kind, 0.0f});
            words >> listed->back().value;
        } else if (kind == "start" || kind == "set") {
            Render& r = renders.back();
            r.text += "\n" + line;
            Render::Change change;
            if (kind == "start" && words >> name)
                r.changes = settings.at(name);
            else if (words >> change.block >> change.title >> change.value)
                r.changes.push_back(change);
        } else if (kind == "at") {
            Render::Row row;
            words >> row.frame;
            row.channels = numbers();
            renders.back().samples.push_back(row);
        } else if (kind == "absolute") {
            renders.back().absolute = numbers();
        } else if (line[0] != '#') {
            break;
        }
    }
    return renders;
}
