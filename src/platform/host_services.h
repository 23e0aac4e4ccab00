// What the command-line host needs of the operating system besides platform.h:
// arguments, files and standard streams, watching files, decoding of texts,
// workers, and loading the filter as a library. A native and a Windows
// implementation stand behind it (posix_host.cpp, posix_replace.cpp,
// posix_watch.cpp and posix_worker.cpp; windows_host.cpp, windows_watch.cpp and
// windows_worker.cpp); readSettings has its native one in posix.cpp, where the
// library reads the same files.
//
// Conventions
//  1. Sizes and offsets count bytes; texts and paths are UTF-8. On POSIX
//     systems a path may be any bytes.
//  2. Nothing here throws except std::bad_alloc. A Failure is what the system
//     says about an error, and none when all went well.
//  3. Streams and files are binary: no line end is changed.
#ifndef TVML_PLATFORM_HOST_SERVICES_H
#define TVML_PLATFORM_HOST_SERVICES_H

#include "fil_process.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tvml::platform {

using Failure = std::optional<std::string>;

// The program's arguments without its name.
std::vector<std::string> programArguments(int argc, const char* const* argv);

// The locale whose language the user reads, such as "ja_JP.UTF-8"; may be empty.
std::string userLanguage();

enum class OutputStream : std::uint8_t { output, error };

// Whether the stream goes to a terminal, and not into a file or to another program.
bool isTerminal(OutputStream stream);

// The width of the stream's terminal; 0 without one.
std::size_t terminalColumns(OutputStream stream);

// Both replace `bytes`; after a failure it holds what was read before.
Failure readFile(const std::string& path, std::string& bytes);
Failure readStandardInput(std::string& bytes);

// The text of the ini file at `path` as IniFile reads it, whatever of it is
// damaged; empty for what reads as a missing file.
std::u16string readSettings(const std::string& path);

// Writes all bytes. A Windows console gets them as UTF-8 text.
Failure writeStream(OutputStream stream, std::string_view bytes);

// Puts a file of these bytes in the place of `path`. Whoever opens `path`
// meanwhile finds the old file or the whole new one; after a failure the old
// file is as it was. A link stays a link, also one to a file that is not there
// yet, and what is no ordinary file (a device, a pipe) is written to. A
// write-protected file is not replaced. The new file is the user's own; it keeps
// the rights of the old one, but not that it runs as somebody else.
Failure replaceFile(const std::string& path, std::string_view bytes);

// Tells when files change. It watches their folders, so that a file that is
// replaced, deleted and made again, or not there yet stays watched.
class FileWatch {
public:
    enum class Event : std::uint8_t {
        changed,  // a file may have another content, or is gone
        timedOut, // nothing happened in the time
        ended,    // the user asked the program to end
    };

    FileWatch();
    FileWatch(const FileWatch&) = delete;
    FileWatch& operator=(const FileWatch&) = delete;
    ~FileWatch();

    // Watches these files, once for each object. From now on the requests to end
    // (SIGINT and SIGTERM, Ctrl+C) are events of the watch and end nothing by
    // themselves, while the object lives.
    Failure start(const std::vector<std::string>& files);

    // Waits for the next event, forever without a time. A change between two
    // calls is told by the second one.
    Event wait(std::optional<std::chrono::milliseconds> time);

private:
    struct Watched;
    std::unique_ptr<Watched> watched_;
};

enum class CodePage : std::uint8_t { utf8, cp932 };

// A text up to the first bytes that do not decode.
struct Decoding {
    std::u16string text;
    std::optional<std::size_t> badOffset; // of those bytes
};

// Decodes strictly; a byte order mark is a character like others.
Decoding decode(std::string_view bytes, CodePage page);

// This program once more, as a process that answers one request after the other.
// It is ended when the object goes, and when the process of the object ends. All
// calls come from one thread, which lives as long as the object.
class Worker {
public:
    enum class Answer : std::uint8_t {
        given,
        late,  // it was not there in time
        ended, // and will not come: the process is gone
    };

    Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    ~Worker();

    // Starts the process with these arguments, once for each object.
    Failure start(const std::vector<std::string>& arguments);

    // Waits for the answer, forever without a time. After all but `given` the
    // process is gone, and no more may be asked.
    Answer ask(std::string_view request, std::string& answer,
               std::optional<std::chrono::milliseconds> time);

    // Of the process that is gone; on POSIX systems 128 and the number of a signal
    // that ended it.
    int exitCode() const;

private:
    struct Process;
    std::unique_ptr<Process> process_;
};

// The other side, in the process.
class WorkerDesk {
public:
    WorkerDesk();
    WorkerDesk(const WorkerDesk&) = delete;
    WorkerDesk& operator=(const WorkerDesk&) = delete;
    ~WorkerDesk();

    // Takes the standard streams for the requests and answers; to be done before
    // anything else. From now on there is nothing to read on standard input, and
    // standard output goes where standard error does.
    Failure open();

    // False when there will be no more.
    bool next(std::string& request);

    // False when nobody wants to know any more.
    bool answer(std::string_view bytes);

private:
    struct Channel;
    std::unique_ptr<Channel> channel_;
};

// The filter as a library file, loaded while the object lives.
class FilterLibrary {
public:
    using Function = decltype(&fil_process);

    FilterLibrary() = default;
    FilterLibrary(const FilterLibrary&) = delete;
    FilterLibrary& operator=(const FilterLibrary&) = delete;
    ~FilterLibrary();

    // Loads the file at `path`, an absolute path, once for each object.
    Failure open(const std::string& path);

    // The exported function; null before open() went well.
    Function function() const { return function_; }

private:
    void* handle_ = nullptr;
    Function function_ = nullptr;
};

} // namespace tvml::platform

#endif
