// A review by what a screen reader reads out: every step finds its control by role and name.

#include "DesktopFixture.h"
#include "Keyboard.h"

#include <algorithm>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class ReviewByNames : public ReviewFixture
{
protected:
    void awaitNo(const QString &role, const QString &name)
    {
        awaitThat(u"the end of "_s + role + u' ' + name, [&] {
            const auto shown = reader().read();
            return shown && std::none_of(shown->cbegin(), shown->cend(), named(role, name).isIt);
        });
    }
};

const QString question = u"Who calls this?"_s;

/// Whatever is met says what it is, and how it is called.
void expectRolesAndNames(const QList<ShownItem> &items)
{
    const QStringList notRoles{QString(), u"invalid"_s, u"unknown"_s};
    for (const ShownItem &item : items) {
        if (item.name.trimmed().isEmpty() || notRoles.contains(item.role)) {
            ADD_FAILURE() << qPrintable(item.role) << " \"" << qPrintable(item.name) << "\" in:\n"
                          << qPrintable(listing(items));
        }
    }
}

/// These are met one after another; others may come between them.
void expectOrder(const QList<ShownItem> &items, const QList<Sought> &order)
{
    auto place = items.cbegin();
    for (const Sought &next : order) {
        place = std::find_if(place, items.cend(), next.isIt);
        if (place == items.cend()) {
            ADD_FAILURE() << qPrintable(next.words) << " does not come in its turn in:\n"
                          << qPrintable(listing(items));
            return;
        }
    }
}

TEST_F(ReviewByNames, EverythingHasARoleAndAName)
{
    expectRolesAndNames(await({named(u"section"_s, u"Full picture"_s)}));

    press(beginning(u"list item"_s, u"src/auth/token_store.cpp, "_s));
    expectRolesAndNames(await({named(u"push button"_s, u"What could break?"_s)}));

    press(named(u"push button"_s, u"All files"_s));
    press(named(u"push button"_s, u"All projects"_s));
    expectRolesAndNames(await({named(u"list item"_s, repositoryName())}));
}

TEST_F(ReviewByNames, AFileIsOpenedSteppedThroughAndAskedAbout)
{
    press(beginning(u"list item"_s, u"src/auth/token_store.cpp, "_s));
    await({named(u"label"_s, u"src/auth/token_store.cpp"_s),
           selected(beginning(u"list item"_s, u"Change 1 of 3, "_s))});

    press(named(u"push button"_s, u"Next change"_s));
    await({named(u"label"_s, u"Change 2 of 3"_s),
           selected(beginning(u"list item"_s, u"Change 2 of 3, "_s)),
           named(u"push button"_s, u"How is it tested?"_s)});

    focus(named(u"text"_s, u"Ask a follow-up…"_s));
    await({focused(named(u"text"_s, u"Ask a follow-up…"_s))});
    typeText(question);
    awaitText(u"Ask a follow-up…"_s, question);
    press(named(u"push button"_s, u"Send"_s));
    await({named(u"list item"_s, u"You: "_s + question),
           beginning(u"list item"_s,
                     u"Answer: This is a sample answer; no model was asked. You asked: "_s +
                         question)});
    awaitText(u"Ask a follow-up…"_s, QString());

    press(named(u"push button"_s, u"All files"_s));
    await({focused(beginning(u"list item"_s, u"src/auth/token_store.cpp, "_s))});
}

TEST_F(ReviewByNames, TheDiffScreenIsReadFromTheWayBackToSend)
{
    press(beginning(u"list item"_s, u"src/auth/token_store.cpp, "_s));
    press(named(u"push button"_s, u"What could break?"_s));
    const QList<ShownItem> items =
        await({beginning(u"list item"_s, u"Answer: This is a sample answer"_s),
               named(u"push button"_s, u"Who calls this?"_s)});

    expectOrder(items, {
                           named(u"frame"_s, u"Reviewer"_s),
                           named(u"push button"_s, u"All files"_s),
                           named(u"label"_s, u"src/auth/token_store.cpp"_s),
                           named(u"label"_s, u"Change 1 of 3"_s),
                           named(u"push button"_s, u"Previous file: refresh_gate.h"_s),
                           named(u"push button"_s, u"Next change"_s),
                           named(u"label"_s, u"Before"_s),
                           named(u"label"_s, u"After"_s),
                           named(u"list"_s, u"Changes in token_store.cpp"_s),
                           beginning(u"list item"_s, u"Change 1 of 3, Behaviour, @@ "_s),
                           beginning(u"list item"_s, u"Change 2 of 3, Behaviour, @@ "_s),
                           named(u"section"_s, u"This change"_s),
                           named(u"heading"_s, u"This change"_s),
                           beginning(u"paragraph"_s, u"This is a sample answer"_s),
                           named(u"list"_s, u"Conversation"_s),
                           named(u"list item"_s, u"You: What could break?"_s),
                           beginning(u"list item"_s, u"Answer: "_s),
                           named(u"push button"_s, u"Who calls this?"_s),
                           named(u"text"_s, u"Ask a follow-up…"_s),
                           named(u"push button"_s, u"Send"_s),
                       });
}

TEST_F(ReviewByNames, ARecentRepositoryIsOpenedFromThePicker)
{
    press(named(u"push button"_s, u"All projects"_s));
    await({named(u"heading"_s, u"Open a repository to read its working changes."_s),
           named(u"push button"_s, u"Choose Folder…"_s), named(u"list"_s, u"Recent"_s)});

    press(named(u"list item"_s, repositoryName()));

    await({named(u"heading"_s, u"Working changes"_s), named(u"label"_s, u"13 files"_s)});
}

TEST_F(ReviewByNames, AMenuIsClosedWhenTheKeyboardIsTakenElsewhere)
{
    press(named(u"push button"_s, u"Menu"_s));
    await({named(u"menu item"_s, u"Settings…"_s)});

    const Sought elsewhere = named(u"push button"_s, u"All projects"_s);
    focus(elsewhere);

    awaitNo(u"menu item"_s, u"Settings…"_s);
    await({focused(elsewhere)});
}

TEST_F(ReviewByNames, TheFolderDialogKeepsTheKeyboardWhenARowBehindItIsPressed)
{
    const Sought row = beginning(u"list item"_s, u"serve.sh, "_s);
    const QList<ShownItem> items = await({row});
    pressKey(u"ctrl+o"_s);
    await({named(u"dialog"_s, u"Choose a repository folder"_s)});

    const auto behind = std::find_if(items.cbegin(), items.cend(), row.isIt);
    EXPECT_TRUE(reader().act(*behind, u"Press"_s));
    await({named(u"list"_s, u"Changes in serve.sh"_s)});
    pressKey(u"Escape"_s);

    awaitNo(u"dialog"_s, u"Choose a repository folder"_s);
    await({focused(named(u"list"_s, u"Changes in serve.sh"_s))});
}

TEST_F(ReviewByNames, ChoicesThatWereOpenedByAPressTakeTheKeys)
{
    pressKey(u"ctrl+comma"_s);
    press(named(u"radio button"_s, u"OpenAI"_s));
    activateWindow(u"Settings"_s);
    press(named(u"combo box"_s, u"Model"_s));
    await({named(u"list"_s, u"Model"_s)});

    pressKey(u"Escape"_s);

    awaitNo(u"list"_s, u"Model"_s);
    await({named(u"frame"_s, u"Settings"_s)});
}

} // namespace
} // namespace vantrel::test
