// The host's files. Entries: readScript, readDescription, writeScript,
// writeBytes.
#include "host/text_files.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "analysis/source_texts.h"
#include "diagnostics/text_width.h"
#include "host/language.h"
#include "platform/host_services.h"

namespace tvml::host {
namespace {

// The whole file at once: nothing may be written before all of it is known to
// decode.
std::string readBytes(const std::string& file) {
    std::string bytes;
    const platform::Failure failure = file == kStandardStream ? platform::readStandardInput(bytes)
                                                              : platform::readFile(file, bytes);
    if (failure) {
        throw inputOrOutputError(inputName(file), {}, Message::file_read, {systemText(*failure)});
    }
    return bytes;
}

// What to say of the first bytes that do not decode. What helps depends on how
// the encoding was chosen: by the user, by detection from the bytes, or by
// detection with most of the text agreeing.
HostError undecodable(const std::string& file, const DecodedText& decoded, InputEncoding wanted,
                      std::string_view bytes) {
    const std::size_t offset = *decoded.badOffset;
    std::array<char, 3> byte{};
    std::snprintf(byte.data(), byte.size(), "%02X",
                  static_cast<unsigned>(static_cast<unsigned char>(bytes[offset])));
    const Message message = wanted != InputEncoding::detect            ? Message::file_undecodable
                            : decoded.encoding == InputEncoding::cp932 ? Message::file_neither
                                                                       : Message::file_damaged;
    return inputOrOutputError(
        inputName(file), positionIn(decoded.text, decoded.text.size()), message,
        {byte.data(), std::to_string(offset), encodingName(decoded.encoding)});
}

// Encodings that decode as another one without a complaint, and as nonsense.
std::optional<Message> foreignEncoding(std::string_view bytes, InputEncoding wanted,
                                       InputEncoding detected) {
    if (wanted != InputEncoding::detect) {
        return std::nullopt;
    }
    if (detected == InputEncoding::utf8 && isIso2022Jp(bytes)) {
        return Message::decode_iso2022;
    }
    const bool isEuc = detected == InputEncoding::cp932 && isEucJp(bytes);
    return isEuc ? std::optional(Message::decode_euc) : std::nullopt;
}

// The filter knows the line feed alone as the end of a line; a carriage return
// before it would be spoken. One that stands alone is left to the text, unless all
// lines end so.
LineEnds turnLineEnds(std::u16string& text) {
    if (text.find(u'\n') == text.npos && text.find(u'\r') != text.npos) {
        std::ranges::replace(text, u'\r', u'\n');
        return LineEnds::returns;
    }
    std::size_t kept = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != u'\r' || i + 1 == text.size() || text[i + 1] != u'\n') {
            text[kept++] = text[i];
        }
    }
    text.resize(kept);
    return LineEnds::feeds;
}

ScriptText readText(const std::string& file, InputEncoding encoding) {
    const std::string bytes = readBytes(file);
    // What was decoded before the bad bytes tells their line and column.
    DecodedText decoded = decodeText(bytes, encoding);
    if (const auto foreign = foreignEncoding(bytes, encoding, decoded.encoding)) {
        throw inputOrOutputError(inputName(file), {}, *foreign);
    }
    if (decoded.badOffset) {
        throw undecodable(file, decoded, encoding, bytes);
    }
    // The filter's texts end at such a character: the rest would be lost.
    const std::size_t terminator = decoded.text.find(u'\0');
    if (terminator != std::u16string::npos) {
        throw inputOrOutputError(inputName(file), positionIn(decoded.text, terminator),
                                 Message::file_nul);
    }
    const LineEnds lineEnds = turnLineEnds(decoded.text);
    return {std::move(decoded.text), lineEnds, decoded.encoding};
}

std::u16string harmlessLines(std::u16string_view text) {
    std::u16string lines = harmlessText(text);
    for (std::size_t end = text.find(u'\n'); end != text.npos; end = text.find(u'\n', end + 1)) {
        lines[end] = u'\n';
    }
    return lines;
}

} // namespace

ScriptText readScript(const std::string& file, InputEncoding encoding) {
    return readText(file, encoding);
}

std::u16string readDescription(const std::string& file, InputEncoding encoding) {
    return asDescription(readText(file, encoding).text);
}

std::u16string asDescription(std::u16string text) {
    blankXmlDeclaration(text);
    return text;
}

// A terminal gets what it can show; files and pipes get every unit.
void writeScript(const std::string& file, std::u16string_view text, OutputEncoding encoding) {
    if (file == kStandardStream && platform::isTerminal(platform::OutputStream::output)) {
        writeBytes(file, encodeText(harmlessLines(text), OutputEncoding::utf8));
        return;
    }
    // All bytes are made before the file is touched, for lack of memory, too.
    writeBytes(file, encodeText(text, encoding));
}

void writeBytes(const std::string& file, std::string_view bytes) {
    const platform::Failure failure =
        file == kStandardStream ? platform::writeStream(platform::OutputStream::output, bytes)
                                : platform::replaceFile(file, bytes);
    if (failure) {
        throw inputOrOutputError(outputName(file), {}, Message::file_write, {systemText(*failure)});
    }
}

bool areOneFile(const std::string& first, const std::string& second) {
    std::error_code unknown;
    const auto path = [](const std::string& name) {
        return std::filesystem::path(std::u8string(name.begin(), name.end()));
    };
    return first != kStandardStream &&
           std::filesystem::equivalent(path(first), path(second), unknown) && !unknown &&
           std::filesystem::is_regular_file(path(first), unknown);
}

void writeOutput(std::string_view text) {
    writeBytes(std::string(kStandardStream), text);
}

TextPosition positionIn(std::u16string_view text, std::size_t offset) {
    const std::u16string_view before = text.substr(0, offset);
    const std::size_t lineFeed = before.rfind(u'\n');
    const std::u16string_view line =
        before.substr(lineFeed == std::u16string_view::npos ? 0 : lineFeed + 1);
    // The second half of a surrogate pair is no character of its own.
    const auto characters =
        std::ranges::count_if(line, [](char16_t unit) { return (unit & 0xFC00) != 0xDC00; });
    return {static_cast<std::size_t>(std::ranges::count(before, u'\n')) + 1,
            static_cast<std::size_t>(characters) + 1};
}

} // namespace tvml::host
