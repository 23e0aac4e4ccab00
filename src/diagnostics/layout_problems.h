// Speech that was written for another reader: plays, notes to colleagues, commands
// without their brackets, captions in the wrong place.
#ifndef TVML_DIAGNOSTICS_LAYOUT_PROBLEMS_H
#define TVML_DIAGNOSTICS_LAYOUT_PROBLEMS_H

#include "diagnostics/script_problems.h"

namespace tvml {

// A cheap look at a line that is spoken: false when checkLayout and checkContent
// cannot have anything to say.
bool layoutNeedsCheck(const ScriptChecks& checks, const ScriptLine& line);

// A letter with more than its colon behind it, as other scripts have. True when it
// is told.
bool checkSpeaker(ScriptChecks& checks, const CheckedLine& checked);

// A line without a speaker. True when something is told.
bool checkLayout(ScriptChecks& checks, const CheckedLine& checked);

// What a line says. True when something is told.
bool checkContent(ScriptChecks& checks, const CheckedLine& checked);

// What a tag line shows or names.
void checkTagValue(ScriptChecks& checks, const CheckedLine& checked);

} // namespace tvml

#endif
