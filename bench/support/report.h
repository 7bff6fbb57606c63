// Collects all repetitions and prints, for each operation and size, everybody's minimum and how we stand to the others.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace rastel::bench {

struct AimedRatio {
    std::string operation;
    double ratio;
    long long fromPixels;
};

// The processor's own time leaves out what other programs take; the clock's counts what one waits for.
enum class Watch { Processor, Clock };

class Report : public benchmark::BenchmarkReporter {
public:
    Report(std::vector<AimedRatio> aims, Watch watch) : aims_(std::move(aims)), watch_(watch) {}

    // Announces what will be measured; the tables keep this order, whatever order the results arrive in.
    void Expect(const std::string& operation, const std::string& size, const std::string& contender);

    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;   // prints

private:
    struct Timings {
        std::string contender;
        std::vector<double> nanoseconds;   // of a call, one a repetition
        double Minimum() const;            // 0: nothing was measured
        double Spread() const;             // of the median over the minimum, as a part of the minimum
    };
    struct Group {   // one operation at one size
        std::string size;
        std::vector<Timings> contenders;
        double Minimum(const std::string& contender) const;   // 0: it wasn't measured
        bool Any() const;                                     // something was
    };

    Timings& Find(const std::string& operation, const std::string& size, const std::string& contender);
    void PrintOperation(const std::string& operation, const std::vector<Group>& groups);
    void Judge(const std::string& operation, const Group& group);

    std::vector<AimedRatio> aims_;
    Watch watch_;
    std::vector<std::string> operations_;
    std::map<std::string, std::vector<Group>> groups_;
    std::vector<std::string> findings_;
};

}   // namespace rastel::bench
