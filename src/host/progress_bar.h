// How far a long command is, on a terminal.
#ifndef TVML_HOST_PROGRESS_BAR_H
#define TVML_HOST_PROGRESS_BAR_H

#include <cstddef>
#include <string>

namespace tvml::host {

// One line of standard error, written anew with every step; nothing where
// nobody watches.
class ProgressBar {
public:
    explicit ProgressBar(std::size_t steps);

    // Takes the bar away, so that messages can be written; show() brings it back.
    void hide();
    void show(std::size_t done, std::size_t failed);

private:
    std::size_t steps_;
    bool watched_;
    std::string shown_;
};

// "[=====>    ]  12/40, 2 failed"
std::string progressLine(std::size_t done, std::size_t steps, std::size_t failed);

} // namespace tvml::host

#endif
