// progress FOLDER: copies with a look at how it goes, and stops a copy.
#include <tarnwell/client.hpp>

#include <iostream>

using namespace tarnwell::client;

int main(int, char** arguments) {
    const ThreadScope thread;
    FileSystem files = Module().Open(arguments[1]);
    const std::string source = files.Combine(arguments[1], "large");
    const std::string target = files.Combine(arguments[1], "copy");
    files.GetFile(source).Write(std::string(std::size_t{10} << 20, 'x'));

    int steps = 0;
    const bool made = files.Copy(source, target, [&] { return ++steps > 0; });
    std::cout << made << ", after more than one step: " << (steps > 1) << "\n";

    // Cancelling at the first question leaves nothing behind.
    std::cout << files.Copy(source, target + "2", [] { return false; }) << "\n";

    // An exception cancels, too, and comes out of the call.
    try {
        files.Copy(source, target + "3",
                   []() -> bool { throw std::runtime_error("enough"); });
    } catch (const std::runtime_error& enough) {
        std::cout << enough.what() << "\n";
    }
    std::cout << files.GetFolder(arguments[1]).Contents().size() << " files\n";

    // Deleting asks whom you like, or nobody.
    const Confirm confirm = [](const std::string& address) {
        return address.back() == 'y';
    };
    for (Item item : files.GetFolder(arguments[1]).Contents())
        std::cout << item.Name() << " deleted: " << item.Delete(false, confirm) << "\n";
}
