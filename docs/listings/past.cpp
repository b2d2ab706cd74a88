// past FOLDER FILE: the latest revisions of a file in it, why there are none, and a
// folder then.
#include <tarnwell/client.hpp>

#include <iostream>

using namespace tarnwell::client;

int main(int, char** arguments) {
    const ThreadScope thread;
    const std::string folder = arguments[1];
    const Module module;
    const FileSystem files = module.Open(folder);

    HistoryQuery query;
    query.count = 20;
    query.follow = true;
    std::string oldest;
    // Each as soon as it is found; "false" from the first function is "enough".
    files.ReadHistory(
        folder + "/" + arguments[2], query,
        [&](const HistoryEntry& entry) {
            std::cout << entry.author << ": " << entry.description << "\n";
            oldest = entry.id;
            return true;
        },
        [] { return true; }); // "false" from the second one ends the client

    try {
        files.History(folder + "/none.c");
    } catch (const Failure& failure) {
        std::cout << (failure.Status() == tarnwell::HistoryNoPath ? "no such file\n"
                                                                  : "failed\n");
    }

    // One client answers all that is asked of a tree.
    const Tree tree = files.OpenTree(folder, oldest);
    for (const TreeEntry& entry : tree.List("", true))
        std::cout << entry.name << ", " << entry.size << " bytes\n";
    std::cout << tree.Read(arguments[2]);
}
