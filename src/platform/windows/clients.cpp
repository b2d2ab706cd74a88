#include "platform/clients.h"

namespace tarnwell
{

const ClientNames clientNames{u"git", u"hg.exe", u"svn.exe", u"p4.exe", u"\\", true};

} // namespace tarnwell
