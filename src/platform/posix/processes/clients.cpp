#include "platform/clients.h"

namespace tarnwell
{

const ClientNames clientNames{u"git", u"hg", u"svn", u"p4", u"/", false};

} // namespace tarnwell
