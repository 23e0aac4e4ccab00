// The one exception type: a failure of the XML machinery. It carries a message
// and the chain of source locations that it passed through, innermost first.
#ifndef TVML_STAGING_TVML_EXCEPTION_H
#define TVML_STAGING_TVML_EXCEPTION_H

#include <string>
#include <vector>

namespace tvml {

class TvmlException {
public:
    struct Location {
        const char* file; // not owned; a literal such as __FILE__
        int line;
    };

    TvmlException(const char* file, int line, const char* message);

    // Formats the message as printf does.
    template <typename... Arguments>
    TvmlException(const char* file, int line, const char* format, Arguments... arguments)
        : locations_{{file, line}} {
        formatMessage(format, arguments...);
    }

    TvmlException(const TvmlException&) = default;
    TvmlException& operator=(const TvmlException&) = default;
    virtual ~TvmlException() = default;

    // Forgets message and locations.
    virtual void clear();

    // A handler that throws the exception on adds its own location first.
    void addLocation(const char* file, int line);

    const std::string& message() const { return message_; }
    const std::vector<Location>& locations() const { return locations_; }

private:
    void formatMessage(const char* format, ...) __attribute__((format(printf, 2, 3)));

    std::vector<Location> locations_;
    std::string message_;
};

} // namespace tvml

#endif
