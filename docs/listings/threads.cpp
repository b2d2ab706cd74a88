// threads FOLDER: each thread has its own objects.
#include <tarnwell/client.hpp>

#include <atomic>
#include <iostream>
#include <thread>
#include <vector>

using namespace tarnwell::client;

int main(int, char** arguments) {
    const Module module; // for all threads
    const std::string folder = arguments[1];
    std::atomic<int> read{0};
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([&, number] {
            const ThreadScope thread; // before the first call, on each thread
            FileSystem files = module.Open(folder);
            File file = files.GetFile(files.Combine(folder, std::to_string(number)));
            file.Write(std::to_string(number));
            read += std::stoi(file.Read());
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    std::cout << read << "\n";
}
