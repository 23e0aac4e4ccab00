// The operating system as this system needs it: the only door to files,
// clocks and text conversion. A native and a Windows implementation stand
// behind it (posix.cpp, windows.cpp); tests put an in-memory one in its place.
//
// Conventions
//  1. Lengths and positions count UTF-16 units unless a name says bytes.
//  2. Nothing here throws except std::bad_alloc; a file that is missing or
//     unreadable is an empty IniFile, a folder that is unknown an empty text.
//  3. Paths are UTF-16 texts in the platform's own spelling.
#ifndef TVML_PLATFORM_PLATFORM_H
#define TVML_PLATFORM_PLATFORM_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace tvml::platform {

// One ini file, opened for a series of reads.
class IniFile {
public:
    virtual ~IniFile() = default;

    // Copies the value of `key` in `section` into `buffer`, always with a
    // terminator when the buffer has room for one. Returns the number of units
    // before the terminator; a value that does not fit is cut to
    // buffer.size() - 1 units and that number is returned. `defaultText` is
    // copied when the file, the section or the key is missing, or the key has
    // no value; its trailing spaces and enclosing quotes are dropped, too.
    //  - Sections and keys compare without case, for A to Z only; the first
    //    section of a name and in it the first entry of a key win.
    //  - Blanks around sections, keys and values are dropped, then one pair of
    //    enclosing quotes (both single or both double) around the value. Only
    //    ASCII blanks are blanks.
    //  - Lines whose first unit that is no blank is `;` are comments. A line
    //    without `=` is a key without a value.
    //  - Entries in front of the first section belong to the section u"".
    // Beyond these rules the platform's own ini service decides; the texts of
    // plain `key=value` lines are the same everywhere.
    virtual std::size_t readString(std::u16string_view section, std::u16string_view key,
                                   std::u16string_view defaultText,
                                   std::span<char16_t> buffer) const = 0;

    // Whether opening the file once more would give the same texts for sure: its
    // reader can then keep what it read.
    virtual bool isCurrent() const { return false; }
};

// The services of one operating system. Objects are stateless and may be
// shared; the process-wide one is system().
class Platform {
public:
    virtual ~Platform() = default;

    // Full path of the main executable of the running process (the host
    // program, not this library), or empty when it cannot be known or does
    // not fit into `capacity` units with its terminator.
    virtual std::u16string hostProgramPath(std::size_t capacity) const = 0;

    // The unit that stands between a folder and a file name.
    virtual char16_t pathSeparator() const = 0;

    // Opens the ini file at `path`, a full path; never null. The native file
    // is read here and never again, so that later changes of it do not show;
    // the Windows service may look at it again with every read. An empty path
    // or one that holds a terminator opens as a missing file.
    virtual std::unique_ptr<IniFile> openIni(const std::u16string& path) const = 0;

    // UTF-8 bytes of `text`; a lone surrogate becomes U+FFFD.
    virtual std::string toUtf8(std::u16string_view text) const = 0;

    // The time in whole seconds, from any fixed start.
    virtual std::uint32_t secondsNow() const = 0;
};

const Platform& system();

} // namespace tvml::platform

#endif
