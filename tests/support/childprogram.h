// The program that stands beside the tests for them to start (platform/child).
#pragma once

#include <filesystem>

namespace tarnwell::test
{

std::filesystem::path ChildProgram();

} // namespace tarnwell::test
