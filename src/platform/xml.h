// Reading XML by questions in XPath 1.0. Windows brings the parser, elsewhere it is a library's.
//
// Nothing outside the document is ever fetched, and nothing in it expanded but the characters that
// every document may name: one with a document type counts as not well formed.
#pragma once

#include "platform/win32.h"

#include <memory>
#include <string>
#include <vector>

namespace tarnwell
{

// A question, made ready once and usable from any thread. `expression` is a constant and valid.
class XmlPath
{
public:
    struct Compiled;

    explicit XmlPath(const char* expression);
    XmlPath(const XmlPath&) = delete;
    XmlPath& operator=(const XmlPath&) = delete;
    ~XmlPath();

    const Compiled& Ready() const
    {
        return *compiled_;
    }

private:
    std::unique_ptr<const Compiled> compiled_;
};

// A document or a node in it, in the platform's form. A document lives as long as one of its
// nodes; one thread at a time uses them.
using XmlNode = std::shared_ptr<void>;
using XmlNodes = std::vector<XmlNode>;

// The elements `name` in elements `parent` that nothing is asked about: neither what is in them nor
// the texts beside them. A platform may leave them out of a document, which takes less memory then;
// all other questions have the same answers.
struct XmlUnasked
{
    const char* parent;
    const char* name;
};

} // namespace tarnwell

extern "C"
{
    // Reads `file` from where it stands to its end. Fails for what isn't well formed. Ill-formed
    // UTF-8 fails, too, on Windows and is replaced elsewhere. `unasked` may be null.
    HRESULT LoadXml(HANDLE file, const tarnwell::XmlUnasked* unasked, tarnwell::XmlNode& document);
    // The value of the first node that `path` selects as seen from `node`, which is to be an
    // attribute or a text. S_FALSE if there is none; a text of nothing but white space is none.
    HRESULT ReadXmlText(const tarnwell::XmlNode& node, const tarnwell::XmlPath& path,
                        std::u16string& text);
    // All nodes that `path` selects, in their order in the document.
    HRESULT SelectXmlNodes(const tarnwell::XmlNode& node, const tarnwell::XmlPath& path,
                           tarnwell::XmlNodes& nodes);
}
