// The document that the cursor walks: what the XML library reports, kept as it
// comes.
#ifndef TVML_STAGING_XML_TREE_H
#define TVML_STAGING_XML_TREE_H

#include <algorithm>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "staging/xml_parser.h"

namespace tvml {

// A node and its place. Pointers stay valid as long as the tree.
struct XmlNode {
    NodeKind kind = NodeKind::other;
    XmlNode* parent = nullptr;
    XmlNode* firstChild = nullptr;
    XmlNode* lastChild = nullptr;
    XmlNode* nextSibling = nullptr;
    std::u16string_view name{}; // of an element, qualified
    std::u16string text{};      // of a text
    struct Attribute {
        std::u16string_view name; // qualified
        std::u16string value;
    };
    std::vector<Attribute> attributes{};

    const Attribute* attribute(std::u16string_view wanted) const {
        const auto found = std::find_if(attributes.begin(), attributes.end(),
                                        [&](const Attribute& at) { return at.name == wanted; });
        return found != attributes.end() ? &*found : nullptr;
    }
};

// Nodes are added in document order, each as the last child of the open one.
class XmlTree {
public:
    XmlNode* root() { return nodes_.empty() ? nullptr : &nodes_.front(); }

    // The document itself, in which everything stands.
    void start() {
        if (nodes_.empty()) {
            last_ = open_ = &nodes_.emplace_back(XmlNode{NodeKind::other, nullptr});
        }
    }

    XmlNode& add(NodeKind kind) {
        XmlNode& node = nodes_.emplace_back(XmlNode{kind, open_});
        (open_->lastChild != nullptr ? open_->lastChild->nextSibling : open_->firstChild) = &node;
        open_->lastChild = &node;
        last_ = &node;
        return node;
    }

    // What is added from here on stands in the last node.
    void open() { open_ = last_; }
    void close() {
        last_ = open_;
        open_ = open_->parent;
    }

    // Texts that follow each other are one.
    void addText(std::u16string_view text) {
        XmlNode& node = last_->kind == NodeKind::text ? *last_ : add(NodeKind::text);
        node.text.append(text);
    }

private:
    std::deque<XmlNode> nodes_;
    XmlNode* open_ = nullptr;
    XmlNode* last_ = nullptr; // what was added or closed last
};

} // namespace tvml

#endif
