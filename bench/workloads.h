// The scripts and descriptions that the benchmarks convert.
#ifndef TVML_BENCH_WORKLOADS_H
#define TVML_BENCH_WORKLOADS_H

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

// Lines of one kind: what is repeated, and how many script lines that is.
struct Workload {
    const char* name;
    std::u16string text;
    std::int64_t lines;
};

// One workload per line kind.
const std::vector<Workload>& workloads();

// `text` repeated until there are at least `lines` lines.
std::u16string script(const Workload& workload, std::int64_t lines);

// Two characters with models; everything else built in.
std::u16string smallDescription();

// About `units` units of templates, models and tags.
std::u16string largeDescription(std::size_t units);

// `lines` lines of everyday dialogue by two characters, and the same dialogue
// as UTF-8 Markdown with one paragraph a line.
std::u16string dialogue(std::int64_t lines);
std::string dialogueAsMarkdown(std::int64_t lines);

// 200 lines of everything.
std::u16string programme();

} // namespace bench

#endif
