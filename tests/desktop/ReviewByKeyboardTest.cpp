// A review without a pointer: every step is a key, and the accessibility bus tells where it led.

#include "DesktopFixture.h"
#include "Keyboard.h"

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class ReviewByKeyboard : public ReviewFixture
{
protected:
    /// From the list, where the keyboard is on the first row, to the second of three changes.
    void goToSecondChange()
    {
        await({focused(beginning(u"list item"_s, u"CMakeLists.txt, "_s))});
        for (const QString &row :
             {u"assets/keys.json"_s, u"assets/sign-in.png"_s, u"docs/Größe und Maß.md"_s,
              u"docs/overview.txt"_s, u"docs/readme.txt"_s, u"docs/start"_s, u"serve.sh"_s,
              u"src/auth/refresh_gate.h"_s, u"src/auth/token_store.cpp"_s}) {
            pressKey(u"Down"_s);
            await({focused(beginning(u"list item"_s, row + u", "_s))});
        }
        pressKey(u"Return"_s);
        await({named(u"label"_s, u"Change 1 of 3"_s)});
        pressKey(u"Down"_s);
        await({named(u"label"_s, u"Change 2 of 3"_s),
               named(u"push button"_s, u"How is it tested?"_s)});
    }
};

TEST_F(ReviewByKeyboard, ReturnOpensTheFirstFileAndDownStepsIntoTheNext)
{
    await({focused(beginning(u"list item"_s, u"CMakeLists.txt, "_s))});

    pressKey(u"Return"_s);
    await({focused(named(u"list"_s, u"Changes in CMakeLists.txt"_s)),
           named(u"label"_s, u"Change 1 of 1"_s)});

    pressKey(u"Down"_s);
    await({focused(named(u"list"_s, u"Changes in keys.json"_s))});

    pressKey(u"Escape"_s);
    await({focused(beginning(u"list item"_s, u"assets/keys.json, "_s))});
}

TEST_F(ReviewByKeyboard, AQuestionIsWrittenSentAndLeft)
{
    goToSecondChange();

    pressKey(u"Return"_s);
    await({focused(named(u"text"_s, u"Ask a follow-up…"_s))});
    typeText(u"Is the margin new?"_s);
    awaitText(u"Ask a follow-up…"_s, u"Is the margin new?"_s);
    pressKey(u"Return"_s);
    await({named(u"list item"_s, u"You: Is the margin new?"_s),
           beginning(u"list item"_s, u"Answer: This is a sample answer"_s)});

    // The panes take the keys again: the next one steps instead of being written.
    pressKey(u"Escape"_s);
    pressKey(u"Down"_s);
    await({named(u"label"_s, u"Change 3 of 3"_s)});
}

TEST_F(ReviewByKeyboard, TheWayBackLeadsOverTheListToThePickerAndInAgain)
{
    goToSecondChange();

    pressKey(u"Escape"_s);
    await({focused(beginning(u"list item"_s, u"src/auth/token_store.cpp, "_s))});

    pressKey(u"alt+Left"_s);
    await({focused(named(u"list item"_s, repositoryName()))});

    pressKey(u"Return"_s);
    await({focused(beginning(u"list item"_s, u"CMakeLists.txt, "_s))});
}

} // namespace
} // namespace vantrel::test
