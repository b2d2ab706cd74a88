#include <tarnwell/client.hpp>

#include <iostream>

int main(int, char** arguments) {
    const tarnwell::client::ThreadScope thread;
    const auto files = tarnwell::client::Module().Open(arguments[1]);
    for (const auto& item : files.GetFolder(arguments[1]).Contents())
        std::cout << item.Name() << (item.IsFolder() ? "/\n" : "\n");
    for (const auto& revision : files.Revisions(arguments[2]))
        std::cout << revision.Id() << " " << revision.Author() << "\n";
}
