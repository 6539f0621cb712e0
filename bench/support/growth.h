// What one item costs as there are more of them: flat is good.
#pragma once

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "support/options.h"
#include "support/table.h"

class Growth
{
 public:
    explicit Growth(const char* bench) : bench_(bench) { std::printf("%s, time for each item\n", bench); }

    // What has no goal.
    void show(const std::string& what, int items, double each)
    {
        std::printf("  %-44s %7d items %10.2f us each\n", what.c_str(), items, each);
        std::fflush(stdout);
        rows_.push_back({{"name", what}, {"items", items}, {"each_us", each}});
    }

    void add(const std::string& what, int items, double each)
    {
        show(what, items, each);
        for (Kind& kind : kinds_) {
            if (kind.what != what) continue;
            kind.each.push_back(each);
            return;
        }
        kinds_.push_back({what, {each}});
    }

    // From the smallest to the largest number of items, for each kind with more than one.
    void finish(const Options& options)
    {
        std::vector<Goal> goals;
        for (const Kind& kind : kinds_)
            if (kind.each.size() > 1)
                goals.push_back({kind.what + ", most to fewest", kind.each.back() / kind.each.front(), 1.5});
        saveJson(options.json, {{"bench", bench_}, {"rows", rows_}, {"goals", printGoals(goals)}});
    }

 private:
    struct Kind
    {
        std::string what;
        std::vector<double> each;
    };

    std::string bench_;
    Json rows_ = Json::array();
    std::vector<Kind> kinds_;
};
