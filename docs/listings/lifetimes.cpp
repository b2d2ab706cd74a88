// lifetimes FOLDER: what outlives what.
#include <tarnwell/client.hpp>

#include <iostream>
#include <optional>

using namespace tarnwell::client;

int main(int, char** arguments) {
    const ThreadScope thread;
    std::optional<Reader> reader;
    std::optional<Contents> contents;
    {
        FileSystem files = Module().Open(arguments[1]);
        files.GetFile(files.Combine(arguments[1], "a")).Write("content");
        reader = files.GetFile(files.Combine(arguments[1], "a")).Open();
        contents = files.GetFolder(arguments[1]).Contents();
        files.GetFile(files.Combine(arguments[1], "b")).Write("later");
    }
    // The file system and the items are gone. What they gave is here, and as it was.
    std::cout << reader->ReadAll() << ", " << contents->size() << " item\n";
}
