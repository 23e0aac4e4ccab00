// Look-ups in the staging description. Entries: the members of StagingDescription.
#include "staging/staging_description.h"

namespace tvml {

std::u16string_view StagingDescription::currentModelName(char16_t letter) const {
    const auto entry = currentModel.find(letter);
    return entry == currentModel.end() ? std::u16string_view{} : entry->second;
}

const CharacterModel* StagingDescription::modelIn(const ModelTable& table, char16_t letter,
                                                  std::u16string_view name) {
    const auto models = table.find(letter);
    if (models == table.end()) {
        return nullptr;
    }
    const auto model = models->second.find(name);
    return model == models->second.end() ? nullptr : model->second.get();
}

const CharacterModel* StagingDescription::findModel(char16_t letter,
                                                    std::u16string_view name) const {
    const CharacterModel* model = modelIn(modelsByJapaneseName, letter, name);
    return model != nullptr ? model : modelIn(modelsByEnglishName, letter, name);
}

const CharacterModel* StagingDescription::currentModelOf(char16_t letter) const {
    const auto entry = currentModel.find(letter);
    return entry == currentModel.end() ? nullptr : findModel(letter, entry->second);
}

const PoseText* StagingDescription::findPose(std::u16string_view name, char16_t letter) const {
    const auto pose = poseTemplates.find(name);
    if (pose == poseTemplates.end()) {
        return nullptr;
    }
    auto text = pose->second.find(letter);
    if (text == pose->second.end()) {
        text = pose->second.find(sharedKey);
    }
    return text == pose->second.end() ? nullptr : &text->second;
}

bool StagingDescription::hasPose(std::u16string_view name, char16_t letter) const {
    const PoseText* pose = findPose(name, letter);
    return pose != nullptr && !pose->text.empty();
}

std::u16string_view StagingDescription::setNamed(std::u16string_view name) const {
    const auto english = setEnglishNames.find(name);
    const auto set =
        setEnglishFiles.find(english == setEnglishNames.end() ? name : english->second);
    return set == setEnglishFiles.end() ? std::u16string_view{} : set->first;
}

bool StagingDescription::hasModel(std::u16string_view name, char16_t letter) const {
    return findModel(letter, name) != nullptr;
}

bool StagingDescription::wearsModel(char16_t letter) const {
    return currentModel.contains(letter);
}

std::u16string DiagnosticLog::line(const Entry& entry) {
    using enum DescriptionProblem;
    const std::u16string& name = entry.element;
    switch (entry.problem) {
    case noNumber:
        return u"// <numofchar> number cannot be retrieved.\n";
    case noText:
        return u"// <" + name + u"> text cannot be retrieved.\n";
    case isEmpty:
        return name == u"fallbackward_switch" ? u"" : u"// <" + name + u"> is empty.\n";
    case notRegistered:
        return u"// Failed to register <" + name + u"> text.\n";
    case titleAttributesMissing:
        return u"// Attribute(s) of <title> cannot be rebrieved.\n";
    case titleAttributesInvalid:
        return u"// Attribute(s) of <title> is invalid.\n";
    case modelAttributesMissing:
        return u"// Attribute(s) of <model_for_char> cannot be rebrieved.\n";
    case modelAttributesInvalid:
        return u"// Attribute(s) of <model> is invalid.\n";
    case sharedTalkNotRegistered:
        return u"Cannot register shared talk command with " + name + u" DB.\n";
    default:
        return {};
    }
}

} // namespace tvml
