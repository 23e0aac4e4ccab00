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
#include <expat.h>
#include <md4c-html.h>

#include "fil_process.h"
#include "workloads.h"

namespace {

std::int32_t sizeOf(const std::u16string& script, const std::u16string& description) {
    return fil_process(script.c_str(), 0, 0, description.c_str(), nullptr, 0);
}

// ---- time per line by kind and number of lines

const std::string kPerLine = "lines/";
const std::string kNoLines = "none";
constexpr int kRepetitions = 7;

void convertLines(benchmark::State& state, const bench::Workload& workload) {
    const std::u16string script = bench::script(workload, state.range(0));
    const std::u16string description = bench::smallDescription();
    for (auto _ : state) {
        benchmark::DoNotOptimize(sizeOf(script, description));
    }
}

// ---- the same dialogue through converters of Markdown

constexpr std::int64_t kDialogueLines = 200000;

void dialogueFilter(benchmark::State& state) {
    const std::u16string script = bench::dialogue(kDialogueLines);
    const std::u16string description = bench::smallDescription();
    for (auto _ : state) {
        benchmark::DoNotOptimize(sizeOf(script, description));
    }
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
}

void dialogueCmark(benchmark::State& state) {
    const std::string markdown = bench::dialogueAsMarkdown(kDialogueLines);
    for (auto _ : state) {
        char* html = cmark_markdown_to_html(markdown.data(), markdown.size(), CMARK_OPT_DEFAULT);
        benchmark::DoNotOptimize(html);
        free(html);
    }
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

void countUnits(void* units, const XML_Char*, int length) {
    *static_cast<std::int64_t*>(units) += length;
}

void bareParse(benchmark::State& state) {
    const std::u16string description = u"\uFEFF" + bench::largeDescription(kDescriptionUnits);
    for (auto _ : state) {
        const XML_Parser parser = XML_ParserCreate(nullptr);
        std::int64_t units = 0;
        XML_SetUserData(parser, &units);
        XML_SetCharacterDataHandler(parser, countUnits);
        XML_Parse(parser, reinterpret_cast<const char*>(description.data()),
                  static_cast<int>(description.size() * sizeof(char16_t)), XML_TRUE);
        XML_ParserFree(parser);
        benchmark::DoNotOptimize(units);
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

// Prints all figures when the last run is over. Of several runs of a benchmark
// the fastest counts, since other work on the machine only ever adds.
class Report : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration) {
                const std::string& name = run.run_name.function_name;
                const std::int64_t lines =
                    name.starts_with(kPerLine) ? std::stoll(run.run_name.args) : 0;
                const double time =
                    run.real_accumulated_time * 1e9 / static_cast<double>(run.iterations);
                double& least = times_[name].try_emplace(lines, time).first->second;
                least = std::min(least, time);
            }
        }
    }

    void Finalize() override {
        printLines();
        for (const auto& [name, times] : times_) {
            if (name.starts_with("dialogue/")) {
                print(name, times.at(0) / kDialogueLines, "ns per line", "dialogue/md4c");
            } else if (name.starts_with("call/")) {
                print(name, times.at(0) / 1000, "us", "call/bare_parse");
            }
        }
    }

private:
    void print(const std::string& name, double figure, const char* unit,
               const std::string& measure) const {
        std::printf("%-20s %8.1f %s", name.c_str(), figure, unit);
        if (times_.contains(measure)) {
            std::printf(", %.2f of %s", times_.at(name).at(0) / times_.at(measure).at(0),
                        measure.c_str());
        }
        std::printf("\n");
    }

    // The ratios are those of the largest to the smallest time of a kind: of whole
    // calls, and of what the lines add to a call without any.
    void printLines() const {
        if (!times_.contains(kPerLine + kNoLines)) {
            return;
        }
        const double fixed = times_.at(kPerLine + kNoLines).at(0);
        std::printf("ns per line of 1,000 to 1,000,000 lines; a call without lines takes %.0f us\n",
                    fixed / 1000);
        for (const auto& [name, times] : times_) {
            if (!name.starts_with(kPerLine) || name == kPerLine + kNoLines) {
                continue;
            }
            std::printf("%-24s", name.c_str());
            std::vector<double> whole;
            std::vector<double> added;
            for (const auto& [lines, time] : times) {
                const double count = static_cast<double>(lines);
                std::printf(" %7.0f", time / count);
                whole.push_back(time / count);
                added.push_back((time - fixed) / count);
            }
            std::printf("   ratio %.2f, of the lines alone %.2f\n", spread(whole), spread(added));
        }
    }

    static double spread(const std::vector<double>& figures) {
        const auto [least, most] = std::minmax_element(figures.begin(), figures.end());
        return *most / *least;
    }

    std::map<std::string, std::map<std::int64_t, double>> times_; // ns by name and lines
};

} // namespace

int main(int argc, char** argv) {
    benchmark::RegisterBenchmark((kPerLine + kNoLines).c_str(), convertLines,
                                 bench::workloads().front())
        ->Arg(0)
        ->Repetitions(kRepetitions);
    for (const bench::Workload& workload : bench::workloads()) {
        benchmark::RegisterBenchmark((kPerLine + workload.name).c_str(), convertLines, workload)
            ->RangeMultiplier(10)
            ->Range(1000, 1000000)
            ->Repetitions(kRepetitions)
            ->MinTime(0.05);
    }
    const auto add = [](const char* name, void (*run)(benchmark::State&)) {
        benchmark::RegisterBenchmark(name, run)->Repetitions(kRepetitions);
    };
    add("dialogue/filter", dialogueFilter);
    add("dialogue/delivered", dialogueDelivered);
    add("dialogue/md4c", dialogueMd4c);
    add("dialogue/cmark", dialogueCmark);
    add("dialogue/memcpy", dialogueMemcpy);
    add("call/programme", oneCall);
    add("call/bare_parse", bareParse);
    add("call/empty", emptyCall);
    // The runs of one benchmark are spread over the whole time, so that a busy
    // minute of the machine does not make one of them slow.
    char interleaving[] = "--benchmark_enable_random_interleaving=true";
    std::vector<char*> arguments(argv, argv + argc);
    arguments.insert(arguments.begin() + 1, interleaving);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 1;
    }
    printPeakMemory();
    Report reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
