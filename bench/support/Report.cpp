#include "Report.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace orrivane::bench {

namespace {

std::string loadAverage() {
    std::ifstream file("/proc/loadavg");
    std::string lastMinute = "?";
    file >> lastMinute;
    return lastMinute;
}

} // namespace

Aim Aim::atMost(double value, double limit, const std::string& unit) {
    return {"at most " + shortNumber(limit) + (unit.empty() ? "" : " ") + unit, value <= limit};
}

Aim Aim::atLeast(double value, double limit, const std::string& unit) {
    return {"at least " + shortNumber(limit) + (unit.empty() ? "" : " ") + unit, value >= limit};
}

void Report::figure(const std::string& subject, const std::string& what, double value,
                    const std::string& unit, const std::optional<Aim>& aim) const {
    std::printf("%s\t%s\t%s\t%s\t%s\t%s\t%s\t%s\n", program_.c_str(), subject.c_str(), what.c_str(),
                shortNumber(value).c_str(), unit.empty() ? "-" : unit.c_str(),
                aim ? aim->text.c_str() : "-",
                !aim       ? "-"
                : aim->met ? "met"
                           : "MISSED",
                loadAverage().c_str());
    std::fflush(stdout);
}

std::string shortNumber(double value) {
    const double size = std::abs(value);
    const int decimals = size == 0 || size >= 100 ? 0 : size >= 10 ? 1 : size >= 1 ? 2 : 3;
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

int setting(const char* name, int otherwise) {
    const char* text = std::getenv(name);
    const int value = text ? std::atoi(text) : 0;
    return value > 0 ? value : otherwise;
}

} // namespace orrivane::bench
