#include <tarnwell/client.hpp>

#include <iostream>

using namespace tarnwell::client;

int main(int, char** arguments) try {
    const ThreadScope thread;
    const std::string trunk = arguments[1]; // svn://host/repository/trunk
    const FileSystem files = Module().Open(trunk);
    for (const Item& item : files.GetFolder(trunk).Contents())
        std::cout << item.Name() << (item.IsFolder() ? "/\n" : "\n");
    std::cout << files.GetFile(trunk + "/hello.c@1").Read();
    for (const Revision& revision : files.Revisions(trunk + "/hello.c"))
        std::cout << revision.Id() << " " << revision.Author() << "\n";
    files.GetFile(trunk + "/none.c").Read();
} catch (const std::exception& failure) {
    std::cerr << failure.what() << "\n";
}
