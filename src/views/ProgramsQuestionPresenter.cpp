#include "views/ProgramsQuestionPresenter.h"

#include "views/CodeText.h"
#include "views/ShownText.h"

#include <QStringList>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype maxColumns = 20'000;

QString visible(const QString &text)
{
    const TextSlice line = TextSlice::fromUtf8(text.toUtf8());
    return visibleCode(line, 0, maxColumns);
}

QString visible(const RepositoryProgram &program)
{
    const QString place = program.submodule.isEmpty() ? QString() : program.submodule + u": "_s;
    return visible(place + program.key + u" = "_s + program.command);
}

} // namespace

void ProgramsQuestionPresenter::setPicker(PickerViewModel *picker)
{
    if (picker == m_picker) {
        return;
    }
    if (m_picker) {
        m_picker->disconnect(this);
    }
    m_picker = picker;
    if (picker != nullptr) {
        connect(picker, &PickerViewModel::questionChanged, this,
                &ProgramsQuestionPresenter::changed);
    }
    Q_EMIT changed();
}

std::optional<PickerViewModel::Question> ProgramsQuestionPresenter::question() const
{
    return m_picker ? m_picker->question() : std::nullopt;
}

QString ProgramsQuestionPresenter::message() const
{
    const auto asked = question();
    if (!asked) {
        return {};
    }
    return tr("To read the changes of “%1”, git would run these commands, which come with the "
              "repository.")
        .arg(visible(asked->repositoryName));
}

QString ProgramsQuestionPresenter::commands() const
{
    const auto asked = question();
    if (!asked) {
        return {};
    }
    QStringList lines;
    for (const RepositoryProgram &program : asked->programs) {
        lines.append(visible(program));
    }
    return shownText(lines.join(u'\n'));
}

} // namespace vantrel
