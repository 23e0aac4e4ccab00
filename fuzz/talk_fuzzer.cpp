// The splitters of speech. Fields: vocabulary entries, speech.
#include "fuzz_input.h"
#include "reading/script_text.h"
#include "reading/talk_splitter.h"

namespace {

using namespace tvml;

// The pieces must be neighbouring parts of the speech, with nothing but blanks
// between them, and fit the limit.
class PieceCheck final : public PieceSink {
public:
    PieceCheck(std::u16string_view speech, std::size_t limit, const KeywordTable& words)
        : speech_(speech), limit_(limit), words_(words) {}

    void piece(std::u16string_view text, bool lastOfSpeech, bool cutInWord) override {
        FUZZ_CHECK(text.data() >= speech_.data());
        const auto start = static_cast<std::size_t>(text.data() - speech_.data());
        FUZZ_CHECK(start + text.size() <= speech_.size());
        FUZZ_CHECK(start >= end_);
        FUZZ_CHECK(!text.empty() || limit_ == 0);
        FUZZ_CHECK(text.size() <= limit_);
        FUZZ_CHECK(!last_);
        FUZZ_CHECK(!cutInWord || !lastOfSpeech);
        checkBlanks(end_, start);
        end_ = start + text.size();
        last_ = lastOfSpeech;
        ++count_;
    }

    void finish() const {
        checkBlanks(end_, speech_.size());
        FUZZ_CHECK(count_ <= speech_.size());
        FUZZ_CHECK(last_ == (count_ != 0));
    }

private:
    void checkBlanks(std::size_t from, std::size_t to) const {
        FUZZ_CHECK(trimScriptText(speech_.substr(from, to - from), words_).empty());
    }

    const std::u16string_view speech_;
    const std::size_t limit_;
    const KeywordTable& words_;
    std::size_t end_ = 0;
    std::size_t count_ = 0;
    bool last_ = false;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view input = fuzz::inputOf(data, size);
    const KeywordTable words = fuzz::vocabularyOf(fuzz::takeField(input));
    const std::u16string speech = fuzz::unitsOf(input);

    PieceCheck japanese(speech, 58, words);
    splitJapaneseTalk(speech, words, japanese);
    japanese.finish();
    PieceCheck english(speech, 120, words);
    splitEnglishTalk(speech, words, english);
    english.finish();
    return 0;
}
