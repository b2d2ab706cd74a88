// Reading what the Subversion client prints, in XML. Throws message 151 where something that must
// be there isn't.
#pragma once

#include "addressed/fsitem.h"
#include "addressed/uri.h"
#include "frame/revisions.h"
#include "platform/xml.h"

#include <memory>
#include <vector>

namespace tarnwell
{

// The document in `file`, from where that stands.
XmlNode LoadSvnXml(HANDLE file);
// The same of a log, perhaps without the paths that each revision changed.
XmlNode LoadSvnLog(HANDLE file);

// A folder's items, in the client's order. Their texts are the folder's address in the form of this
// module, "/" and the name.
FSItems ParseListOutput(const XmlNode& document);

// The first item of a listing. Its text is what the client calls the target.
std::shared_ptr<FSItem> ParseListItemOutput(const XmlNode& document);

// An item's facts but for its size, which isn't told here.
std::shared_ptr<FSItem> ParseInfoOutput(const XmlNode& document);

// The history of `uri`, in the client's order. A missing description is an empty one; a missing
// author fails the whole.
std::vector<RevisionRecord> ParseLogOutput(const Uri& uri, const XmlNode& document);

} // namespace tarnwell
