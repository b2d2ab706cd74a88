// reading FOLDER: whole files, pieces, facts.
#include <tarnwell/client.hpp>

#include <array>
#include <iostream>
#include <vector>

using namespace tarnwell;
using namespace tarnwell::client;

int main(int, char** arguments) {
    const ThreadScope thread;
    const Module module;
    FileSystem files = module.Open(arguments[1]);
    const std::string path = files.Combine(arguments[1], "data.bin");

    // Whole: a string, or anything with data() and size().
    files.GetFile(path).Write(std::string("twelve bytes"));
    std::cout << files.GetFile(path).Read() << "\n";

    // In pieces.
    Writer writer = files.GetFile(path).Create();
    writer.Write(std::vector<std::uint16_t>{0x3131, 0x3232});
    writer.Write("33");
    writer.Close(); // throws if it couldn't be finished; the destructor would tell nobody
    Reader reader = files.GetFile(path).Open();
    std::array<char, 4> piece{};
    while (const std::size_t size = reader.Read(piece))
        std::cout << std::string(piece.data(), size) << "|";
    std::cout << "\n";
    reader.Close(); // on Windows an open file can't be deleted

    // Facts are looked up when the object is made; a new object sees what is new.
    File file = files.GetFile(path, true);
    std::cout << file.Size() << " bytes, read-only: ";
    file.SetAttributes(AttributeReadOnly);
    std::cout << ((file.Attributes() & AttributeReadOnly) != 0) << "\n";
    file.SetAttributes(AttributeNormal);
    file.Delete();
}
