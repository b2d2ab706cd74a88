// revisions FILE: every revision of a file, with what it holds.
#include <tarnwell/client.hpp>

#include <iostream>

using namespace tarnwell::client;

int main(int, char** arguments) {
    const ThreadScope thread;
    const std::string file = arguments[1];
    const Module module;
    const FileSystem files = module.Open(file);
    if (!files.HasRevisions(file))
        std::cout << "none are known\n"; // or the client is missing, or the server
    for (const Revision& revision : files.Revisions(file)) {
        const std::string address = revision.Address();
        // The working copy comes first where there is one; its address is a local path.
        const bool workingCopy =
            tarnwell::client::ClassOf(address) == tarnwell::CLSID_Win32FileSystem;
        const FileSystem place = workingCopy ? module.Open(address) : files;
        std::cout << (workingCopy ? "working copy" : revision.Description()) << ": "
                  << place.GetFile(address).Read();
    }
}
