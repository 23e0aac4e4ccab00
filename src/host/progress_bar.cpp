// Entry: ProgressBar.
#include "host/progress_bar.h"

#include "diagnostics/text_width.h"
#include "host/language.h"
#include "platform/host_services.h"

namespace tvml::host {
namespace {

constexpr std::size_t kWidth = 40;

void write(const std::string& text) {
    // A bar that cannot be shown harms nobody.
    platform::writeStream(platform::OutputStream::error, text);
}

} // namespace

std::string progressLine(std::size_t done, std::size_t steps, std::size_t failed) {
    const std::size_t filled = steps == 0 ? kWidth : done * kWidth / steps;
    std::string line = "[";
    line.append(filled, '=').append(kWidth - filled, ' ').append("] ");
    line.append(std::to_string(done)).append("/").append(std::to_string(steps));
    if (failed > 0) {
        line += say(Message::list_comma) + say(Message::progress_failed, {std::to_string(failed)});
    }
    return line;
}

ProgressBar::ProgressBar(std::size_t steps)
    : steps_(steps), watched_(platform::isTerminal(platform::OutputStream::error)) {}

// With blanks: not every terminal knows how to erase.
void ProgressBar::hide() {
    if (!shown_.empty()) {
        write(std::string("\r").append(columnsOf(utf16(shown_)), ' ').append("\r"));
        shown_.clear();
    }
}

void ProgressBar::show(std::size_t done, std::size_t failed) {
    if (watched_) {
        hide();
        shown_ = progressLine(done, steps_, failed);
        write(shown_);
    }
}

} // namespace tvml::host
