// credentials ADDRESS USER PASSWORD: lists a folder of a server that knows its users.
#include <tarnwell/client.hpp>

#include <iostream>

using namespace tarnwell::client;

int main(int, char** arguments) try {
    const ThreadScope thread;
    Answers answers;
    bool asked = false;
    answers.credentials =
        [&](const CredentialsQuestion& question) -> std::optional<Credentials> {
        std::cout << "asked for user \"" << question.user << "\"\n";
        if (std::exchange(asked, true))
            return std::nullopt; // give up
        return Credentials{arguments[2], arguments[3], {}};
    };
    answers.refused = [](const std::string&) { std::cout << "refused\n"; };

    const FileSystem files = Module().Open(arguments[1], answers);
    std::cout << files.GetFolder(arguments[1]).Contents().size() << " items\n";
} catch (const Failure& failure) {
    std::cout << "failed"
              << (failure.Status() == E_ACCESSDENIED ? ": no credentials\n" : "\n");
}
