#include "completion.h"

#include "address.h"
#include "commands.h"
#include "options.h"
#include "text16.h"

#include <algorithm>

namespace tarnwell::host
{

namespace
{

std::u16string CommonOptions()
{
    std::u16string names;
    for (const Option& option : Options())
    {
        if (option.help != Word::None)
            names += (names.empty() ? u"" : u" ") + std::u16string(option.name);
    }
    return names;
}

// What completes the options' values: files, one of some words, or nothing.
std::u16string ValueCases()
{
    std::u16string cases;
    for (const Option& option : Options())
    {
        if (option.value == nullptr)
            continue;
        std::u16string words = option.value;
        const bool isChoice = words.find(u'|') != std::u16string::npos;
        std::replace(words.begin(), words.end(), u'|', u' ');
        cases += u"        " + std::u16string(option.name) + u") ";
        if (isChoice)
            cases += u"mapfile -t COMPREPLY < <(compgen -W \"" + words + u"\" -- \"$cur\") && ";
        else if (words == u"FILE")
            cases += u"_filedir && ";
        cases += u"return ;;\n";
    }
    return cases;
}

// Options behind which a value stands, as alternatives of a pattern.
std::u16string OptionsWithValue()
{
    std::u16string names;
    for (const Option& option : Options())
    {
        if (option.value != nullptr)
            names += (names.empty() ? u"" : u" | ") + std::u16string(option.name);
    }
    return names;
}

std::u16string CommandNames()
{
    std::u16string names;
    for (const Command& command : Commands())
        names += (names.empty() ? u"" : u" ") + std::u16string(command.name);
    return names;
}

std::u16string OwnOptions()
{
    std::u16string cases;
    for (const Command& command : Commands())
    {
        if (command.own.empty())
            continue;
        cases += u"        " + std::u16string(command.name) + u") options+=\"";
        for (const OwnOption& own : command.own)
            cases += u" " + std::u16string(own.name);
        cases += u"\" ;;\n";
    }
    return cases;
}

std::u16string Schemes()
{
    std::u16string names;
    for (const std::u16string_view scheme : AddressBeginnings())
        names += (names.empty() ? u"" : u" ") + std::u16string(scheme);
    return names;
}

// "{commands}" and the like stand for what the tables say.
constexpr std::string_view script = R"(# bash completion for tarnwell-host
_tarnwell_host()
{
    local cur prev words cword
    _init_completion -n :=@ || return

    local i command="" options="{options}"
    for ((i = 1; i < cword; ++i)); do
        case ${words[i]} in
            {valued}) ((++i)) ;;
            -?*) ;;
            *) command=${words[i]} && break ;;
        esac
    done
    case $prev in
{values}    esac
    case $command in
{own}    esac

    if [[ $cur == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
    elif [[ -z $command || $command == help ]]; then
        mapfile -t COMPREPLY < <(compgen -W "{commands}" -- "$cur")
    elif [[ $cur == git:* || $cur == hg:* ]]; then
        # A path, maybe behind two slashes.
        local scheme=${cur%%:*}:
        cur=${cur#"$scheme"}
        [[ $cur != //* ]] || scheme+=//
        cur=${cur#//}
        _filedir
        COMPREPLY=("${COMPREPLY[@]/#/$scheme}")
        __ltrim_colon_completions "$scheme$cur"
    elif [[ $command != selfcheck ]]; then
        _filedir
        local schemes
        mapfile -t schemes < <(compgen -W "{schemes}" -- "$cur")
        if ((${#schemes[@]} > 0)); then
            COMPREPLY+=("${schemes[@]}")
            compopt -o nospace
            __ltrim_colon_completions "$cur"
        fi
    fi
} &&
    complete -F _tarnwell_host tarnwell-host
)";

} // namespace

std::u16string BashCompletion()
{
    std::u16string text = FromUtf8(script);
    const auto put = [&](std::u16string_view place, const std::u16string& value) {
        for (std::size_t at = 0; (at = text.find(place, at)) != std::u16string::npos;
             at += value.size())
            text.replace(at, place.size(), value);
    };
    put(u"{options}", CommonOptions());
    put(u"{values}", ValueCases());
    put(u"{valued}", OptionsWithValue());
    put(u"{own}", OwnOptions());
    put(u"{commands}", CommandNames());
    put(u"{schemes}", Schemes());
    return text;
}

} // namespace tarnwell::host
