// The description reader. The input is the description.
#include <memory>

#include "fuzz_input.h"
#include "staging/staging_description.h"

namespace {

using namespace tvml;

// What the commands need is there, whatever the description says.
void checkDefaults(const StagingDescription& staging, TemplateDb& templates) {
    for (const TemplateCollection& collection : templates.characters) {
        FUZZ_CHECK(collection.variantsOf(sharedKey) != nullptr);
    }
    for (const SimpleTemplateCollection& collection : templates.simples) {
        FUZZ_CHECK(collection.size() > 0);
    }
    FUZZ_CHECK(templates.title.size() > 0);
    FUZZ_CHECK(templates.twoshot.variantsOf(u"$") != nullptr);
    for (const auto& [letter, name] : staging.currentModel) {
        FUZZ_CHECK(letter >= u'A' && letter <= u'Z' && !name.empty());
        FUZZ_CHECK(staging.findModel(letter, name) != nullptr);
    }
    FUZZ_CHECK(staging.tags.tagNames.all().size() == staging.tags.tagTexts.all().size());
    for (const auto& [japanese, english] : staging.setEnglishNames) {
        FUZZ_CHECK(staging.setFiles.contains(japanese));
        FUZZ_CHECK(staging.setEnglishFiles.contains(english));
    }
    for (const std::u16string& text : staging.plainTexts) {
        FUZZ_CHECK(text.empty() || text.ends_with(u'\n'));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const KeywordTable words = fuzz::vocabularyOf({});
    const fuzz::Host platform({}, {});
    const std::u16string description = fuzz::unitsOf(fuzz::inputOf(data, size));

    StagingDescription staging;
    TemplateDb templates;
    DiagnosticLog log;
    const char16_t last =
        DescriptionReader(words, platform, staging, templates, log).readFilDescription(description);
    FUZZ_CHECK(last >= u'A' && last <= u'Z');
    checkDefaults(staging, templates);

    // Positions change nothing, there is one for every element that is read, and
    // no element is told of more than a few times.
    StagingDescription again;
    TemplateDb templatesAgain;
    DiagnosticLog positioned;
    const std::shared_ptr<const XmlDocument> document = parseXml(description, {true});
    const std::size_t positions = XMLParser(document).tags().size();
    FUZZ_CHECK(DescriptionReader(words, platform, again, templatesAgain, positioned)
                   .readFilDescription(document) == last);
    FUZZ_CHECK(again.plainTexts == staging.plainTexts);
    FUZZ_CHECK(positions <= description.size() * 50'000);
    FUZZ_CHECK(log.entries().size() <= positioned.entries().size());
    FUZZ_CHECK(positioned.entries().size() <= 6 * positions + description.size() + 1);
    for (const DiagnosticLog::Entry& entry : positioned.entries()) {
        DiagnosticLog::line(entry);
    }
    return 0;
}
