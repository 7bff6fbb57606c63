#include "support/report.h"

#include <algorithm>
#include <cstdio>

namespace rastel::bench {
namespace {

const std::string yardstick = "memcpy";
const std::string ours = "Rastel";
constexpr double noise =
    0.02;   // two minima of the same code differ by this much on a quiet machine, by far more on a busy one

bool IsPeer(const std::string& contender) {
    return contender != yardstick && contender.rfind(ours, 0) != 0;
}

std::string Formatted(const char* format, double value) {
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

// The element of that name, appended if there is none.
template <class Element>
Element& FindOrAppend(std::vector<Element>& list, std::string Element::*key, const std::string& name) {
    const auto found = std::find_if(list.begin(), list.end(), [&](const Element& e) { return e.*key == name; });
    if (found != list.end()) {
        return *found;
    }
    list.emplace_back();
    list.back().*key = name;
    return list.back();
}

}   // namespace

double Report::Timings::Minimum() const {
    return nanoseconds.empty() ? 0 : *std::min_element(nanoseconds.begin(), nanoseconds.end());
}

double Report::Timings::Spread() const {
    std::vector<double> sorted = nanoseconds;
    std::sort(sorted.begin(), sorted.end());
    return sorted[sorted.size() / 2] / sorted.front() - 1;
}

double Report::Group::Minimum(const std::string& contender) const {
    for (const Timings& timings : contenders) {
        if (timings.contender == contender) {
            return timings.Minimum();
        }
    }
    return 0;
}

Report::Timings& Report::Find(const std::string& operation, const std::string& size, const std::string& contender) {
    if (std::find(operations_.begin(), operations_.end(), operation) == operations_.end()) {
        operations_.push_back(operation);
    }
    Group& group = FindOrAppend(groups_[operation], &Group::size, size);
    return FindOrAppend(group.contenders, &Timings::contender, contender);
}

void Report::Expect(const std::string& operation, const std::string& size, const std::string& contender) {
    Find(operation, size, contender);
}

bool Report::Group::Any() const {
    return std::any_of(contenders.begin(), contenders.end(), [](const Timings& t) { return t.Minimum() > 0; });
}

bool Report::ReportContext(const Context&) {
    return true;
}

void Report::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        const std::string& name = run.run_name.function_name;   // operation/size/contender
        if (run.error_occurred) {
            std::fprintf(stderr, "%s: %s\n", name.c_str(), run.error_message.c_str());
            continue;
        }
        if (run.run_type != Run::RT_Iteration || run.iterations == 0) {
            continue;
        }
        const auto first = name.find('/'), second = name.find('/', first + 1);
        Timings& timings =
            Find(name.substr(0, first), name.substr(first + 1, second - first - 1), name.substr(second + 1));
        const double seconds = watch_ == Watch::Clock ? run.real_accumulated_time : run.cpu_accumulated_time;
        timings.nanoseconds.push_back(seconds / static_cast<double>(run.iterations) * 1e9);
    }
}

void Report::PrintOperation(const std::string& operation, const std::vector<Group>& groups) {
    std::vector<std::string> peers;
    for (const Group& group : groups) {
        for (const Timings& timings : group.contenders) {
            if (timings.Minimum() > 0 && IsPeer(timings.contender) &&
                std::find(peers.begin(), peers.end(), timings.contender) == peers.end()) {
                peers.push_back(timings.contender);
            }
        }
    }
    std::printf("\n%s\n%-10s %-16s %12s %7s %8s", operation.c_str(), "size", "contender", "min ns", "spread",
                "/memcpy");
    for (const std::string& peer : peers) {
        std::printf(" %*s", static_cast<int>(std::max<std::size_t>(peer.size() + 1, 7)), ("/" + peer).c_str());
    }
    std::printf("\n");
    for (const Group& group : groups) {
        const double base = group.Minimum(yardstick);
        std::string label = group.size;
        for (const Timings& timings : group.contenders) {
            const double minimum = timings.Minimum();
            if (minimum == 0) {
                continue;   // filtered out
            }
            std::printf("%-10s %-16s %12.1f %6.0f%% %8s", label.c_str(), timings.contender.c_str(), minimum,
                        timings.Spread() * 100, base > 0 ? Formatted("%.2f", minimum / base).c_str() : "");
            label.clear();
            for (const std::string& peer : peers) {
                const double theirs = IsPeer(timings.contender) ? 0 : group.Minimum(peer);
                std::printf(" %*s", static_cast<int>(std::max<std::size_t>(peer.size() + 1, 7)),
                            theirs > 0 ? Formatted("%.2f", minimum / theirs).c_str() : "");
            }
            std::printf("\n");
        }
    }
}

void Report::Judge(const std::string& operation, const Group& group) {
    const double minimum = group.Minimum(ours);
    if (minimum == 0) {
        return;
    }
    const std::string where = operation + " " + group.size + ": ";
    for (const Timings& timings : group.contenders) {
        const double theirs = timings.Minimum();
        if (IsPeer(timings.contender) && theirs > 0 && minimum / theirs > 1 + noise) {
            findings_.push_back(where + Formatted("%.2f", minimum / theirs) + " of " + timings.contender);
        }
    }
    int width = 0, height = 0;
    std::sscanf(group.size.c_str(), "%dx%d", &width, &height);
    const double base = group.Minimum(yardstick);
    for (const AimedRatio& aim : aims_) {
        if (aim.operation == operation && static_cast<long long>(width) * height >= aim.fromPixels && base > 0 &&
            minimum / base > aim.ratio * (1 + noise)) {
            findings_.push_back(where + Formatted("%.2f", minimum / base) + " of memcpy, over " +
                                Formatted("%.2f", aim.ratio));
        }
    }
}

void Report::Finalize() {
    for (const std::string& operation : operations_) {
        if (std::none_of(groups_[operation].begin(), groups_[operation].end(),
                         [](const Group& g) { return g.Any(); })) {
            continue;
        }
        PrintOperation(operation, groups_[operation]);
        for (const Group& group : groups_[operation]) {
            Judge(operation, group);
        }
    }
    std::printf("\nSlower than a peer, or over an aim:\n");
    for (const std::string& finding : findings_) {
        std::printf("  %s\n", finding.c_str());
    }
    if (findings_.empty()) {
        std::printf("  nothing\n");
    }
    std::fflush(stdout);
}

}   // namespace rastel::bench
