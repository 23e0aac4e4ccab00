// Calls from several threads at once, and processes that are forked meanwhile.
#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "fil_process.h"
#include "robustness/programme.h"

namespace tvml {
namespace {

constexpr const Programme* kProgrammes[] = {&kRichProgramme, &kBrokenProgramme, &kEndlessProgramme,
                                            &kDeclaringProgramme, &kListingProgramme};

std::u16string converted(const Programme& programme) {
    std::u16string buffer(kBufferUnits, u'#');
    buffer.resize(static_cast<std::size_t>(programme.convert(buffer)));
    return buffer;
}

// A call that ends with an exception inside: the values would fill each other.
std::int32_t refused() {
    std::u16string description = u"<staging><model_for_char character='A' japanesename='j' "
                                 u"englishname='e' default='yes'";
    const std::pair<const char16_t*, const char16_t*> values[] = {{u"lipsync", u"$5"},
                                                                  {u"speed", u"$6"},
                                                                  {u"pitch", u"$7"},
                                                                  {u"intonation", u"$8"},
                                                                  {u"volume", u"$9"}};
    for (const auto& [name, placeholder] : values) {
        description.append(u" ").append(name).append(u"='");
        for (int i = 0; i < 1000; ++i) {
            description += placeholder;
        }
        description += u"'";
    }
    description += u">x</model_for_char><talk>$3</talk></staging>";
    return fil_process(u"A: x\n", 0, 0, description.c_str(), nullptr, 0);
}

// The vocabulary in the folder of this program, saved again and again while the
// object lives. Its words stay the same, but each call finds a file that is new.
class EditedVocabulary {
public:
    EditedVocabulary() {
        std::ifstream file(TVML_SOURCE_DIR "/config/keyword.ini", std::ios::binary);
        shipped_.assign(std::istreambuf_iterator<char>(file), {});
        save(0);
        editor_ = std::thread([this] {
            for (int number = 1; !done_; ++number) {
                save(number);
                std::this_thread::sleep_for(std::chrono::microseconds(200));
            }
        });
    }
    ~EditedVocabulary() {
        done_ = true;
        editor_.join();
    }

private:
    void save(int number) const {
        const auto folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
        const auto made = folder / ("keyword.ini." + std::to_string(getpid()));
        std::ofstream(made, std::ios::binary) << shipped_ << "\n; " << number << "\n";
        std::filesystem::rename(made, folder / "keyword.ini");
    }

    std::string shipped_;
    std::atomic<bool> done_{false};
    std::thread editor_;
};

TEST(Threads, CallAtOnceAndGetWhatOneThreadGets) {
    const EditedVocabulary edited;
    std::vector<std::u16string> expected;
    for (const Programme* programme : kProgrammes) {
        expected.push_back(converted(*programme));
    }
    ASSERT_EQ(refused(), 0);
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < 8; ++thread) {
        threads.emplace_back([&, thread] {
            for (std::size_t call = 0; call < 60; ++call) {
                const std::size_t at = (thread + call) % std::size(kProgrammes);
                wrong += converted(*kProgrammes[at]) != expected[at];
                wrong += call % 20 == 0 && refused() != 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, 0);
}

// Whatever the other thread does in the moment of the fork, the child can call.
TEST(Threads, LeaveTheTurnFreeInForkedProcesses) {
    const std::u16string expected = converted(kRichProgramme);
    std::atomic<bool> done{false};
    std::thread caller([&] {
        while (!done) {
            converted(kDeclaringProgramme);
        }
    });
    for (int i = 0; i < 40; ++i) {
        std::this_thread::sleep_for(std::chrono::microseconds(137 * i));
        const pid_t child = fork();
        if (child == 0) {
            alarm(20); // ends a child that waits for ever
            _exit(converted(kRichProgramme) == expected ? 0 : 1);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0) << i;
    }
    done = true;
    caller.join();
}

} // namespace
} // namespace tvml
