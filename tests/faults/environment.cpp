// The texts that these tests compare are English, whatever the user of the machine speaks.
#include <gmock/gmock.h>

#include <cstdlib>

namespace
{

class EnglishTexts : public testing::Environment
{
public:
    void SetUp() override
    {
        setenv("LC_ALL", "C.UTF-8", 1);
    }
};

[[maybe_unused]] testing::Environment* const registered =
    testing::AddGlobalTestEnvironment(new EnglishTexts());

} // namespace
