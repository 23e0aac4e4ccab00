// What a description adds to the language of a script: the names by which lines
// call its tags, poses, sets and models.
#ifndef TVML_READING_PROGRAMME_NAMES_H
#define TVML_READING_PROGRAMME_NAMES_H

#include <string_view>

#include "reading/line_kind.h"

namespace tvml {

class ProgrammeNames {
public:
    DeclaredTags tags;
    TextMap poseNames; // Japanese pose name -> English pose name

    // A pose of the letter, or of all characters, with a text.
    virtual bool hasPose(std::u16string_view name, char16_t letter) const = 0;

    // The English name of a set that has a file, given one of its names; empty
    // when there is no such set.
    virtual std::u16string_view setNamed(std::u16string_view name) const = 0;

    virtual bool hasModel(std::u16string_view name, char16_t letter) const = 0;
    virtual bool wearsModel(char16_t letter) const = 0;

protected:
    ~ProgrammeNames() = default;
};

} // namespace tvml

#endif
