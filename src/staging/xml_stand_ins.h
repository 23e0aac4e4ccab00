// Names beyond the library's. It keeps to the letters of the first editions of
// XML, while descriptions may use those of the fifth, such as fullwidth ones.
#ifndef TVML_STAGING_XML_STAND_INS_H
#define TVML_STAGING_XML_STAND_INS_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tvml {

// Other letters stand in for those of the names in a text while it is parsed.
class NameStandIns {
public:
    // Puts them in; false when the text has no such names.
    bool apply(std::u16string& text);

    // The name as the description has it; `copy` holds it when it is another.
    std::u16string_view original(std::u16string_view name, std::u16string& copy) const;

private:
    void replaceNames(std::u16string& text, std::size_t from, std::size_t end);
    char16_t standInFor(char16_t unit, std::u16string_view text);

    std::map<char16_t, char16_t> standIns_;
    std::map<char16_t, char16_t> originals_;
    std::vector<bool> taken_; // units that the text or a stand-in uses
    std::size_t next_ = 0;
};

} // namespace tvml

#endif
