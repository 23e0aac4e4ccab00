// Speech cut into pieces, to the unit.
#include "reading/talk_splitter.h"

#include "support/rows.h"

namespace tvml {
namespace {

class Pieces final : public PieceSink {
public:
    void piece(std::u16string_view text, bool lastOfSpeech, bool cutInWord) override {
        all += "[" + notation(text) + "]" + (cutInWord ? "!" : "") + (lastOfSpeech ? "." : "");
    }
    std::string all;

private:
    // The short notation of a text: runs of four and more units as counts.
    static std::string notation(std::u16string_view text) {
        std::string result;
        for (std::size_t i = 0; i < text.size();) {
            const std::size_t end = std::min(text.find_first_not_of(text[i], i), text.size());
            const bool counts = end - i > 3;
            result += shown(text.substr(i, counts ? 1 : end - i));
            result += counts ? "{" + std::to_string(end - i) + "}" : "";
            i = end;
        }
        return result;
    }
};

template <typename Split> void checkSplit(const std::string& file, Split split) {
    checkRows(file, [&](const Row& row) {
        Pieces pieces;
        split(expand(row.input), tableOf(row.words), pieces);
        return pieces.all;
    });
}

TEST(TalkSplitter, Japanese) {
    checkSplit("reading/japanese_talk.rows", splitJapaneseTalk);
}

TEST(TalkSplitter, English) {
    checkSplit("reading/english_talk.rows", splitEnglishTalk);
}

} // namespace
} // namespace tvml
