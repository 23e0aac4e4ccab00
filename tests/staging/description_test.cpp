// What a filter description leaves in the tables of a run.
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <vector>

#include "staging/reading_guard.h"
#include "staging/tvml_exception.h"
#include "support/rows.h"

namespace tvml {
namespace {

struct Reading {
    StagingDescription staging;
    TemplateDb templates;
    DiagnosticLog log;
    char16_t lastCharacter = 0;

    Reading(std::u16string_view elements, const KeywordTable& words) {
        std::u16string text(elements);
        lastCharacter = DescriptionReader(words, platform::system(), staging, templates, log)
                            .readFilDescription(text);
    }
};

void addVariants(std::string& out, const std::string& name, const VariantList* list) {
    for (std::size_t i = 1; list != nullptr && i <= list->size(); ++i) {
        if (list->variant(i).element != 0) {
            out += name + "=" + shown(list->variant(i).text.text()) + "; ";
        }
    }
}

void addMode(std::string& out, std::u16string_view name, SwitchMode mode) {
    out += mode == SwitchMode::random ? "" : shown(name) + " toggles; ";
}

void addTemplates(std::string& out, const Reading& reading) {
    for (std::size_t i = 0; i < kCharacterElements.size(); ++i) {
        addMode(out, kCharacterElements[i].name, reading.staging.characterModes[i]);
        for (const char16_t key : std::u16string_view(u"ABCDEFGHIJKLMNOPQRSTUVWXYZ$")) {
            addVariants(out, shown(kCharacterElements[i].name) + static_cast<char>(key),
                        reading.templates.characters[i].variantsOf(key));
        }
    }
    for (std::size_t i = 0; i < kSimpleElements.size(); ++i) {
        addMode(out, kSimpleElements[i].name, reading.staging.simpleModes[i]);
        addVariants(out, shown(kSimpleElements[i].name), &reading.templates.simples[i].variants());
    }
    addMode(out, u"twoshot", reading.staging.twoshotMode);
    for (const char* key : {"AB", "AC", "BC", "BA", "AA", "$"}) {
        addVariants(
            out, std::string("twoshot") + key,
            reading.templates.twoshot.variantsOf(std::u16string(key, key + std::strlen(key))));
    }
    addMode(out, u"title", reading.staging.titleMode);
    addVariants(out, "title", &reading.templates.title.variants());
}

void addMap(std::string& out, const std::string& name, const TextMap& map) {
    for (const auto& [key, value] : map) {
        out += name + " " + shown(key) + "=" + shown(value) + "; ";
    }
}

void addModels(std::string& out, const std::string& name, const ModelTable& table) {
    for (const auto& [letter, models] : table) {
        for (const auto& [key, m] : models) {
            out += name + " " + static_cast<char>(letter) + shown(key) + "=" + shown(m->text);
            for (const auto* value : {&m->hiplevel, &m->hipposition, &m->lipsync, &m->speed,
                                      &m->pitch, &m->intonation, &m->volume}) {
                out += shown(*value) + ",";
            }
            out += "; ";
        }
    }
}

// Problems that have no line of their own.
std::string silentProblem(const DiagnosticLog::Entry& entry) {
    using enum DescriptionProblem;
    static const std::map<DescriptionProblem, std::string> kNames{
        {badNumber, "bad number"},   {isEmpty, "empty"},          {setLineSkipped, "skipped"},
        {setNameTaken, "set taken"}, {tagNameTaken, "tag taken"}, {characterReplaced, "read as A"},
        {unknownElement, "unknown"}, {xmlError, "xml error"},
    };
    return kNames.at(entry.problem) + " " + shown(entry.element) + "; ";
}

// All that differs from an empty description, in a fixed order.
std::string told(const Reading& reading) {
    std::string out = reading.lastCharacter == u'B'
                          ? ""
                          : std::string("last ") + static_cast<char>(reading.lastCharacter) + "; ";
    for (std::size_t i = 0; i < kPlainElements.size(); ++i) {
        if (reading.staging.plainTexts[i] != defaultTextOf(kPlainElements[i])) {
            out +=
                shown(kPlainElements[i].name) + "=" + shown(reading.staging.plainTexts[i]) + "; ";
        }
    }
    addTemplates(out, reading);
    addModels(out, "ja", reading.staging.modelsByJapaneseName);
    addModels(out, "en", reading.staging.modelsByEnglishName);
    for (const auto& [letter, name] : reading.staging.currentModel) {
        out += std::string("current ") + static_cast<char>(letter) + shown(name) + "; ";
    }
    addMap(out, "set", reading.staging.setFiles);
    addMap(out, "set file", reading.staging.setEnglishFiles);
    addMap(out, "set name", reading.staging.setEnglishNames);
    addMap(out, "pose", reading.staging.poseNames);
    for (const auto& [name, texts] : reading.staging.poseTemplates) {
        for (const auto& [letter, pose] : texts) {
            out +=
                "pose " + shown(name) + static_cast<char>(letter) + "=" + shown(pose.text) + "; ";
        }
    }
    addMap(out, "tag", reading.staging.tags.tagNames.all());
    addMap(out, "tag text", reading.staging.tags.tagTexts.all());
    for (const DiagnosticLog::Entry& entry : reading.log.entries()) {
        const std::u16string line = DiagnosticLog::line(entry);
        out += line.empty() ? silentProblem(entry) : shown(line);
    }
    return out.ends_with(' ') ? out.substr(0, out.size() - 1) : out;
}

TEST(Description, Rows) {
    checkRows("staging/description.rows", [](const Row& row) {
        const bool isDocument = row.input.find(u"staging") != kNone;
        return told(
            Reading(expand(isDocument ? row.input : u"<staging>" + row.input + u"</staging>"),
                    tableOf(row.words)));
    });
}

// Every name of the tables is an element with its own place and its own lines.
TEST(Description, EveryElementIsRead) {
    const KeywordTable words = tableOf(shippedWords());
    const auto read = [&](std::u16string_view name, std::u16string_view text) {
        std::u16string document = u"<staging><";
        document.append(name).append(u">").append(text).append(u"</").append(name);
        return told(Reading(document + u"></staging>", words));
    };
    const auto checkProblems = [&](std::u16string_view element) {
        const std::string name = shown(element);
        EXPECT_EQ(read(element, u""), "// <" + name + "> text cannot be retrieved.|");
        if (name != "fallbackward_switch") {
            EXPECT_EQ(read(element, u"　"), "// <" + name + "> is empty.|");
        }
    };
    const auto checkElement = [&](std::u16string_view element, const std::string& key,
                                  bool switches) {
        const std::string name = shown(element);
        EXPECT_EQ(read(element, u"t"), name + key + "=t|;");
        checkProblems(element);
        if (switches) {
            const std::u16string switchName = std::u16string(element) + u"_switch";
            EXPECT_EQ(read(switchName, u"toggle"), name + " toggles;");
            checkProblems(switchName);
        }
    };
    for (const BuiltinRow& row : kPlainElements) {
        checkElement(row.name, "", false);
    }
    for (const ElementRow& row : kCharacterElements) {
        checkElement(row.name, "$", true);
    }
    for (const BuiltinRow& row : kSimpleElements) {
        checkElement(row.name, "", true);
    }
    checkElement(u"twoshot", "$", true);
    EXPECT_EQ(read(u"title_switch", u"toggle"), "title toggles;");
    checkProblems(u"title_switch");
}

std::size_t countOf(std::u16string_view text, std::u16string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != kNone; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

// What stands in where the description is silent: whole lines, every skip closed,
// fonts of the vocabulary, and lights that the studio has.
TEST(Description, DefaultsFillEveryGap) {
    Reading reading(u"", tableOf(shippedWords()));
    std::vector<std::u16string_view> texts;
    for (const TemplateCollection& collection : reading.templates.characters) {
        ASSERT_EQ(collection.variantsOf(sharedKey)->size(), 1U);
        texts.push_back(collection.variantsOf(sharedKey)->variant(1).text.text());
    }
    for (const SimpleTemplateCollection& collection : reading.templates.simples) {
        ASSERT_EQ(collection.size(), 1U);
        texts.push_back(collection.variants().variant(1).text.text());
    }
    TitleFonts fonts;
    RandomGenerator random;
    texts.push_back(
        reading.templates.title.selectTemplate(SwitchMode::toggle, random, fonts)->text.text());
    EXPECT_EQ(shown(fonts.titlefont_ja + u"," + fonts.titlefont_en + u"," + fonts.subtitlefont_ja +
                    u"," + fonts.subtitlefont_en),
              "ＭＳ 明朝,Century,ＭＳ 明朝,Century");
    const std::u16string& setting = reading.staging.plain(PlainElement::setting);
    std::string switched;
    for (const std::u16string& text : reading.staging.plainTexts) {
        texts.push_back(text);
        std::size_t at = 0;
        while ((at = text.find(u"switch(name=", at)) != kNone && &text != &setting) {
            at += 12;
            const std::u16string_view light = std::u16string_view(text).substr(at, 6);
            const std::u16string name(light.substr(0, light.find(u',')));
            EXPECT_NE(setting.find(u"(name=" + name + u", r="), kNone) << shown(name);
            switched += text.compare(at + name.size() + 9, 3, u"on)") == 0 ? "+" : "-";
        }
        switched += text.find(u"light:") == 0 ? " " : "";
    }
    EXPECT_EQ(switched, "+++++-- +----++ ---++-- ------- ");
    for (const std::u16string_view text : texts) {
        if (!text.empty()) {
            EXPECT_TRUE(text.ends_with(u"\n") && !text.ends_with(u"\n\n")) << shown(text);
            EXPECT_EQ(countOf(text, u"skipscript( switch=on )\n"),
                      countOf(text, u"skipscript( switch=off )\n"))
                << shown(text);
        }
    }
}

TEST(Description, FailuresLeaveAsTheOneException) {
    const struct {
        void (*fail)();
        std::string message;
        std::size_t locations;
    } rows[] = {
        {[] { throw std::runtime_error("no luck %s"); }, "no luck %s", 1},
        {[] { throw TvmlException("there", 5, "told"); }, "told", 2},
        {[] { throw 5; }, std::string(127, 'x'), 1},
    };
    const KeywordTable words =
        tableOf(shippedWords({{u"fail_create_xmlparser", std::u16string(200, u'x')}}));
    for (const auto& row : rows) {
        try {
            guarded(words[u"fail_create_xmlparser"], platform::system(), 7, row.fail);
            ADD_FAILURE() << "nothing thrown for " << row.message;
        } catch (const TvmlException& problem) {
            EXPECT_EQ(problem.message(), row.message);
            ASSERT_EQ(problem.locations().size(), row.locations);
            EXPECT_STREQ(problem.locations().back().file, "readFilDescription");
            EXPECT_EQ(problem.locations().back().line, 7);
        }
    }
    EXPECT_THROW(guarded(words[u"fail_create_xmlparser"], platform::system(), 7,
                         [] { throw std::bad_alloc(); }),
                 std::bad_alloc);
}

// What stands in for the studio's elements that a description does not have, as
// "builtin.tvml" lists it: "# ELEMENT" and the lines of its text.
TEST(Description, LeavesTheBuiltInStudioWhereItIsSilent) {
    const Reading reading(u"<staging/>", tableOf(shippedWords()));
    std::string texts;
    const auto add = [&](std::u16string_view name, std::u16string_view text) {
        texts += "# " + shown(name) + "\n";
        texts.append(text.begin(), text.end());
    };
    for (std::size_t i = 0; i < kPlainElements.size(); ++i) {
        add(kPlainElements[i].name, reading.staging.plainTexts[i]);
    }
    for (std::size_t i = 0; i < kSimpleElements.size(); ++i) {
        ASSERT_EQ(reading.templates.simples[i].size(), 1U);
        add(kSimpleElements[i].name,
            reading.templates.simples[i].variants().variant(1).text.text());
    }
    ASSERT_EQ(reading.templates.title.size(), 1U);
    add(kTitleElement, reading.templates.title.variants().variant(1).text.text());
    std::ifstream file(TVML_TESTS "/staging/builtin.tvml", std::ios::binary);
    EXPECT_EQ(texts, std::string(std::istreambuf_iterator<char>(file), {}));
}

} // namespace
} // namespace tvml
