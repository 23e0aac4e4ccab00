// A programme as its viewer will see it. Entry: runStoryboard.
#include "host/storyboard_command.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/conversion.h"
#include "host/host_error.h"
#include "host/inputs.h"
#include "host/language.h"
#include "host/storyboard_json.h"
#include "host/storyboard_page.h"
#include "host/text_files.h"

namespace tvml::host {
namespace {

namespace fs = std::filesystem;

// Pictures go into the page up to these sizes, in bytes; larger ones are shown as
// labelled places.
constexpr std::uintmax_t kLargestPicture = 2'000'000;
constexpr std::uintmax_t kAllPictures = 16'000'000;

struct PictureType {
    std::string_view ending;
    std::string_view type;
};
constexpr std::array<PictureType, 7> kPictureTypes{{
    {".png", "image/png"},
    {".jpg", "image/jpeg"},
    {".jpeg", "image/jpeg"},
    {".gif", "image/gif"},
    {".bmp", "image/bmp"},
    {".webp", "image/webp"},
    {".avif", "image/avif"},
}};

std::string_view pictureType(std::string ending) {
    std::ranges::transform(ending, ending.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    const auto row = std::ranges::find(kPictureTypes, ending, &PictureType::ending);
    return row == kPictureTypes.end() ? std::string_view{} : row->type;
}

std::string base64(std::string_view bytes) {
    static constexpr std::string_view kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - at);
        unsigned group = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            group = group << 8 | (i < count ? static_cast<unsigned char>(bytes[at + i]) : 0U);
        }
        for (std::size_t i = 0; i < 4; ++i) {
            text += i <= count ? kDigits[group >> (18 - 6 * i) & 63U] : '=';
        }
    }
    return text;
}

// Scripts name files as the player's system does, with backslashes. A name that
// leads out of the folder is nobody's picture.
fs::path pathIn(const fs::path& folder, std::u16string name) {
    std::ranges::replace(name, u'\\', u'/');
    const std::string bytes = utf8(name);
    const fs::path path = fs::path(std::u8string(bytes.begin(), bytes.end())).lexically_normal();
    const bool leadsOut =
        path.is_absolute() || path.has_root_name() || (!path.empty() && *path.begin() == "..");
    return leadsOut ? fs::path() : folder / path;
}

class Media {
public:
    explicit Media(const Options& options) {
        const auto add = [this](const std::string& folder) {
            folders_.emplace_back(std::u8string(folder.begin(), folder.end()));
        };
        std::ranges::for_each(options.media, add);
        if (folders_.empty() && options.script != kStandardStream) {
            folders_.push_back(fs::path(std::u8string(options.script.begin(), options.script.end()))
                                   .parent_path());
        }
    }

    void note(const NamedFile& file, StoryboardSource& source) {
        if (folders_.empty()) {
            return;
        }
        const fs::path path = find(file.name);
        source.exists[file.name] = !path.empty();
        if (!path.empty() && file.use == FileUse::picture) {
            takePicture(path, source.pictures[file.name]);
            if (source.pictures[file.name].empty()) {
                source.pictures.erase(file.name);
            }
        }
    }

private:
    fs::path find(const std::u16string& name) const {
        for (const fs::path& folder : folders_) {
            std::error_code unknown;
            const fs::path path = pathIn(folder, name);
            if (!path.empty() && fs::is_regular_file(path, unknown)) {
                return path;
            }
        }
        return {};
    }

    void takePicture(const fs::path& path, std::string& address) {
        std::error_code unknown;
        const std::uintmax_t size = fs::file_size(path, unknown);
        const std::string_view type = pictureType(path.extension().string());
        if (unknown || type.empty() || size > kLargestPicture || size > left_) {
            return;
        }
        std::ifstream file(path, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        left_ -= size;
        address.append("data:").append(type).append(";base64,").append(base64(bytes));
    }

    std::vector<fs::path> folders_;
    std::uintmax_t left_ = kAllPictures;
};

std::string modelOf(const Options& options) {
    const Inputs inputs = readInputs(options);
    AnalysisWants wants;
    wants.problems = wants.storyboard = wants.statistics = wants.offer = true;
    const Analysis analysis = Filter().run(inputs.request(options), wants);
    StoryboardSource source{inputs.scriptName, inputs.descriptionName, {}, {}};
    Media media(options);
    for (const NamedFile& file : analysis.statistics.files) {
        media.note(file, source);
    }
    if (options.boardFormat == BoardFormat::json) {
        source.pictures.clear();
    }
    return storyboardJson(analysis, source);
}

} // namespace

int runStoryboard(const Options& options) {
    if (areOneFile(options.output, options.script) ||
        areOneFile(options.output, options.description)) {
        refuse(Message::usage_outputIsInput, {options.output});
    }
    if (options.boardFormat == BoardFormat::json) {
        writeBytes(options.output, modelOf(options));
        return kDone;
    }
    if (kStoryboardPageHead.empty()) {
        throw inputOrOutputError(options.output, {}, Message::storyboard_noPage);
    }
    std::string page(kStoryboardPageHead);
    page.append(modelOf(options)).append(kStoryboardPageTail);
    writeBytes(options.output, page);
    return kDone;
}

} // namespace tvml::host
