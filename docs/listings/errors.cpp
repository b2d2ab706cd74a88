// errors FOLDER: what a failure tells.
#include <tarnwell/client.hpp>

#include <cstdio>
#include <iostream>

using namespace tarnwell::client;

int main(int, char** arguments) {
    const ThreadScope thread;
    const Module module;
    try {
        module.Open(arguments[1]).GetFile(std::string(arguments[1]) + "/none", true);
    } catch (const Failure& failure) {
        // The text is for the user, in the user's language; the status is for the
        // program.
        std::printf("0x%08X\n%s\n", static_cast<unsigned>(failure.Status()),
                    failure.what());
    }
    try {
        // A bare failure: the module has no text for it, and client.hpp makes a plain
        // one.
        module.Open("git:").CreateTempFile("git:///none");
    } catch (const Failure& failure) {
        std::printf("0x%08X\n%s\n", static_cast<unsigned>(failure.Status()),
                    failure.what());
    }
}
