// Commands that change how a character speaks and behaves from now on, and
// recorded speech. Entries: speakNormally, setTalkSpeed, playSoundFile, setVoice,
// switchGesture, setModel.
#include "generation/character_actions.h"
#include "reading/script_text.h"

namespace tvml {
namespace {

// The speed is named in the output as in the command, "normally" apart.
void changeSpeed(const CharacterAction& action, std::u16string_view speed) {
    constexpr std::u16string_view kSpeak = u"speak ";
    if (action.name > action.run.state.lastCharacter) {
        return;
    }
    action.run.talkSpeed[Run::slot(action.name)] = speed;
    const bool isNormal = action.row.action == Action::speakNormally;
    action.out.append(u"// set character ").append(letterText(action.name));
    action.out.append(u" talk speed to ");
    action.out.append(isNormal ? u"normal" : action.row.name.substr(kSpeak.size()));
    action.out.append(u".\n");
}

} // namespace

void speakNormally(const CharacterAction& action) {
    const CharacterModel* model = action.run.staging.currentModelOf(action.name);
    changeSpeed(action, model != nullptr ? std::u16string_view(model->speed)
                                         : action.run.settings.speed(TalkSpeed::normally));
}

void setTalkSpeed(const CharacterAction& action, TalkSpeed speed) {
    changeSpeed(action, action.run.settings.speed(speed));
}

void playSoundFile(const CharacterAction& action) {
    const RecognizedCommand& command = action.command;
    std::u16string caption(command.caption);
    replaceDoubleQuotes(caption);

    std::u16string& out = action.out;
    out.append(u"character: talkfile( name=").append(letterText(action.name));
    out.append(u", filename=\"").append(command.name).append(u"\"");
    if (!command.adverbs.degree.empty()) {
        out.append(u", lipsync=").append(command.adverbs.degree);
    }
    out.append(u", caption=\"").append(caption).append(u"\"");
    if (!command.adverbs.blocking.empty()) {
        out.append(u", wait=").append(command.adverbs.blocking);
    }
    out += u" )\n";
}

void setVoice(const CharacterAction& action) {
    action.out.append(u"character: setvoice( name=").append(letterText(action.name));
    action.out.append(u", voicetype=").append(action.command.english).append(u" )\n");
}

void switchGesture(const CharacterAction& action, bool on) {
    action.run.autoGesture[Run::slot(action.name)] = on;
    appendAutoGesture(action.name, on, action.out);
}

void setModel(const CharacterAction& action) {
    StagingDescription& staging = action.run.staging;
    const std::u16string_view name = action.command.name;
    const CharacterModel* model = staging.findModel(action.name, name);
    staging.currentModel.insert_or_assign(action.name, std::u16string(name));
    action.run.models[Run::slot(action.name)] = model;
    action.out.append(u"// set the model of character ").append(letterText(action.name));
    action.out.append(u" to \"").append(name).append(u".\"\n");
    action.run.talkSpeed[Run::slot(action.name)] = model->speed;
}

} // namespace tvml
