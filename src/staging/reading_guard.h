// How a failure leaves the reading of a description.
#ifndef TVML_STAGING_READING_GUARD_H
#define TVML_STAGING_READING_GUARD_H

#include <algorithm>
#include <exception>
#include <new>
#include <string>

#include "platform/platform.h"
#include "staging/tvml_exception.h"
#include "vocabulary/word.h"

namespace tvml {

// The message of a failure of unknown type: a word of the vocabulary, narrow
// and at most 127 bytes long.
inline std::string narrowMessage(const Word& word, const platform::Platform& platform) {
    std::string message = platform.toUtf8(word.textOrEmpty());
    message.resize(std::min<std::size_t>(message.size(), 127));
    return message;
}

// Runs one step of the reading; every failure leaves it as a TvmlException
// with the reader's location.
template <typename Step>
auto guarded(const Word& unknownFailure, const platform::Platform& platform, int line, Step step) {
    try {
        return step();
    } catch (TvmlException& problem) {
        problem.addLocation("readFilDescription", line);
        throw TvmlException(problem);
    } catch (const std::bad_alloc&) {
        throw; // an exhausted heap is no fault of the XML
    } catch (const std::exception& problem) {
        throw TvmlException("readFilDescription", line, "%s", problem.what());
    } catch (...) {
        throw TvmlException("readFilDescription", line,
                            narrowMessage(unknownFailure, platform).c_str());
    }
}

} // namespace tvml

#endif
