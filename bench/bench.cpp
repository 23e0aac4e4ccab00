// Every figure of the filter's speed and memory, in one run. Figures of one run
// are to be compared with each other, since machines differ.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <cmark.h>
#include <md4c-html.h>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "fil_process.h"
#include "workloads.h"

namespace {

std::int32_t sizeOf(const std::u16string& script, const std::u16string& description) {
    return fil_process(script.c_str(), 0, 0, description.c_str(), nullptr, 0);
}

void perLine(benchmark::State& state, std::int64_t lines) {
    state.counters["per_line"] = benchmark::Counter(static_cast<double>(lines),
                                                    benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}

// ---- time per line by kind and number of lines

void convertLines(benchmark::State& state, const bench::Workload& workload) {
    const std::u16string script = bench::script(workload, state.range(0));
    const std::u16string description = bench::smallDescription();
    for (auto _ : state) {
        benchmark::DoNotOptimize(sizeOf(script, description));
    }
    perLine(state, state.range(0));
}

// ---- the same dialogue through converters of Markdown

constexpr std::int64_t kDialogueLines = 200000;

void dialogueFilter(benchmark::State& state) {
    const std::u16string script = bench::dialogue(kDialogueLines);
    const std::u16string description = bench::smallDescription();
    for (auto _ : state) {
        benchmark::DoNotOptimize(sizeOf(script, description));
    }
    perLine(state, kDialogueLines);
}

// With the text delivered into a buffer that the host keeps.
void dialogueDelivered(benchmark::State& state) {
    const std::u16string script = bench::dialogue(kDialogueLines);
    const std::u16string description = bench::smallDescription();
    std::u16string output(static_cast<std::size_t>(sizeOf(script, description)), u'\0');
    for (auto _ : state) {
        benchmark::DoNotOptimize(fil_process(script.c_str(), 0, 0, description.c_str(),
                                             output.data(),
                                             static_cast<std::int32_t>(output.size())));
    }
    perLine(state, kDialogueLines);
}

void appendHtml(const MD_CHAR* text, MD_SIZE size, void* output) {
    static_cast<std::string*>(output)->append(text, size);
}

void dialogueMd4c(benchmark::State& state) {
    const std::string markdown = bench::dialogueAsMarkdown(kDialogueLines);
    for (auto _ : state) {
        std::string html;
        md_html(markdown.data(), static_cast<MD_SIZE>(markdown.size()), appendHtml, &html, 0, 0);
        benchmark::DoNotOptimize(html.data());
    }
    perLine(state, kDialogueLines);
}

void dialogueCmark(benchmark::State& state) {
    const std::string markdown = bench::dialogueAsMarkdown(kDialogueLines);
    for (auto _ : state) {
        char* html = cmark_markdown_to_html(markdown.data(), markdown.size(), CMARK_OPT_DEFAULT);
        benchmark::DoNotOptimize(html);
        free(html);
    }
    perLine(state, kDialogueLines);
}

// The least that any converter must do: write the output once.
void dialogueMemcpy(benchmark::State& state) {
    const std::u16string script = bench::dialogue(kDialogueLines);
    const auto units = static_cast<std::size_t>(sizeOf(script, bench::smallDescription()));
    const std::u16string from(units, u'x');
    for (auto _ : state) {
        std::u16string to(units, u'\0');
        std::memcpy(to.data(), from.data(), units * sizeof(char16_t));
        benchmark::DoNotOptimize(to.data());
    }
    perLine(state, kDialogueLines);
}

// ---- one call, against the bare parse of its description

constexpr std::size_t kDescriptionUnits = 60000;

void oneCall(benchmark::State& state) {
    const std::u16string script = bench::programme();
    const std::u16string description = bench::largeDescription(kDescriptionUnits);
    for (auto _ : state) {
        benchmark::DoNotOptimize(sizeOf(script, description));
    }
}

void emptyCall(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(sizeOf(u"", u""));
    }
}

void bareParse(benchmark::State& state) {
    const std::u16string description = bench::largeDescription(kDescriptionUnits);
    const std::string bytes(description.begin(), description.end());
    xercesc::XMLPlatformUtils::Initialize();
    for (auto _ : state) {
        xercesc::XercesDOMParser parser;
        parser.setDoNamespaces(true);
        const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(bytes.data()),
                                                bytes.size(), "description", false);
        parser.parse(source);
        benchmark::DoNotOptimize(parser.getDocument());
    }
    xercesc::XMLPlatformUtils::Terminate();
}

void initializeAndTerminate(benchmark::State& state) {
    for (auto _ : state) {
        xercesc::XMLPlatformUtils::Initialize();
        xercesc::XMLPlatformUtils::Terminate();
    }
}

// ---- memory

// Converts in a child, so that the peak is that of this conversion alone.
void printPeakMemory() {
    constexpr std::int64_t kLines = 1000000;
    const auto child = [](bool converts) {
        std::fflush(stdout);
        const pid_t process = fork();
        if (process == 0) {
            const std::u16string script = bench::dialogue(converts ? kLines : 1);
            const std::u16string description = bench::smallDescription();
            const std::int32_t size = sizeOf(script, description);
            std::u16string output(static_cast<std::size_t>(size), u'\0');
            fil_process(script.c_str(), 0, 0, description.c_str(), output.data(), size);
            rusage usage{};
            getrusage(RUSAGE_SELF, &usage);
            if (converts) {
                const double bytes = 2.0 * size;
                std::printf("peak memory of %lld lines with script and output buffer: %.0f MB, "
                            "%.2f times the output's %.0f MB\n",
                            static_cast<long long>(kLines),
                            static_cast<double>(usage.ru_maxrss) / 1024,
                            static_cast<double>(usage.ru_maxrss) * 1024 / bytes, bytes / 1048576);
                std::fflush(stdout);
            }
            _exit(0);
        }
        waitpid(process, nullptr, 0);
    };
    child(true);
}

// Prints the usual table and, at the end, how evenly each kind's lines cost.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            const std::string& name = run.run_name.function_name;
            if (name.starts_with("lines/") && run.counters.contains("per_line")) {
                costs_[name].push_back(run.counters.at("per_line").value);
            }
        }
        ConsoleReporter::ReportRuns(runs);
    }

    void Finalize() override {
        std::printf("\nlargest to smallest time per line, over all numbers of lines\n");
        for (const auto& [name, costs] : costs_) {
            const auto [least, most] = std::minmax_element(costs.begin(), costs.end());
            std::printf("  %-28s %.2f\n", name.c_str(), *most / *least);
        }
    }

private:
    std::map<std::string, std::vector<double>> costs_;
};

} // namespace

int main(int argc, char** argv) {
    for (const bench::Workload& workload : bench::workloads()) {
        benchmark::RegisterBenchmark((std::string("lines/") + workload.name).c_str(), convertLines,
                                     workload)
            ->RangeMultiplier(10)
            ->Range(1000, 1000000)
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::RegisterBenchmark("dialogue/filter", dialogueFilter)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("dialogue/delivered", dialogueDelivered)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("dialogue/md4c", dialogueMd4c)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("dialogue/cmark", dialogueCmark)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("dialogue/memcpy", dialogueMemcpy)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("call/programme", oneCall)->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("call/bare_parse", bareParse)->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("call/empty", emptyCall)->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("call/initialize", initializeAndTerminate)
        ->Unit(benchmark::kMicrosecond);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    printPeakMemory();
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
