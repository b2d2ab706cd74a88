// The password dialog. No code of the module shows it; what counts is the template itself.
#include "support/loadedmodule.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

namespace tarnwell::test
{

namespace
{

using testing::ElementsAreArray;

constexpr WORD passwordDialog = 127;

// Classes of controls, as a template names them.
constexpr WORD button = 0x80;
constexpr WORD edit = 0x81;
constexpr WORD label = 0x82;

struct Control
{
    WORD id;
    WORD type;
    std::u16string text;

    friend bool operator==(const Control&, const Control&) = default;
};

struct Dialog
{
    std::u16string caption;
    std::u16string font;
    std::vector<Control> controls;
};

// Walks over the words of a dialog template.
class TemplateReader
{
public:
    explicit TemplateReader(const void* begin)
        : begin_(static_cast<const WORD*>(begin)), at_(begin_)
    {
    }

    Dialog Read()
    {
        const DWORD style = Double();
        Skip(2); // extended style
        const WORD count = Word();
        Skip(4);        // place and size
        NumberOrText(); // menu
        NumberOrText(); // class
        Dialog dialog;
        dialog.caption = Text();
        if ((style & DS_SETFONT) != 0)
        {
            Skip(1); // size
            dialog.font = Text();
        }
        for (WORD i = 0; i < count; ++i)
            dialog.controls.push_back(ReadControl());
        return dialog;
    }

private:
    Control ReadControl()
    {
        // Controls begin at whole double words.
        Skip((at_ - begin_) % 2);
        Skip(8); // styles, place and size
        Control control{};
        control.id = Word();
        control.type = NumberOrText().value_or(WORD{0});
        control.text = Text();
        const WORD extraBytes = Word();
        Skip((extraBytes + 1) / 2);
        return control;
    }

    WORD Word()
    {
        return *at_++;
    }

    DWORD Double()
    {
        const DWORD low = Word();
        return low | (static_cast<DWORD>(Word()) << 16);
    }

    void Skip(std::ptrdiff_t words)
    {
        at_ += words;
    }

    std::u16string Text()
    {
        std::u16string text;
        while (const WORD unit = Word())
            text += static_cast<char16_t>(unit);
        return text;
    }

    // The number where a number stands, nothing where a text does.
    std::optional<WORD> NumberOrText()
    {
        constexpr WORD numberFollows = 0xFFFF;
        if (*at_ != numberFollows)
        {
            Text();
            return std::nullopt;
        }
        Skip(1);
        return Word();
    }

    const WORD* begin_;
    const WORD* at_;
};

Dialog ReadDialog()
{
    const HMODULE module = LoadLibraryW(LoadedModule::DefaultFile().c_str());
    const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(passwordDialog), RT_DIALOG);
    EXPECT_NE(found, nullptr);
    return found == nullptr ? Dialog()
                            : TemplateReader(LockResource(LoadResource(module, found))).Read();
}

TEST(PasswordDialog, HasItsCaptionAndFont)
{
    const Dialog dialog = ReadDialog();
    EXPECT_EQ(dialog.caption, u"Enter Password");
    EXPECT_EQ(dialog.font, u"MS Shell Dlg");
}

TEST(PasswordDialog, HasItsControls)
{
    constexpr WORD none = 0xFFFF;
    const Control expected[] = {
        {none, label, u"Please enter the password for the following user and host:"},
        {none, label, u"Password:"},
        {128, edit, u""},
        {none, label, u"Host:"},
        {130, edit, u""},
        {none, label, u"User:"},
        {132, edit, u""},
        {IDOK, button, u"OK"},
        {IDCANCEL, button, u"Cancel"},
    };
    EXPECT_THAT(ReadDialog().controls, ElementsAreArray(expected));
}

} // namespace

} // namespace tarnwell::test
