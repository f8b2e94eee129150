#include "views/ModelChoiceListModel.h"

#include <algorithm>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString customEntry = QStringLiteral("Custom model ID…");

std::optional<AIProvider> providerAt(int index)
{
    const bool isPlace = index >= 0 && index < int(allAIProviders.size());
    return isPlace ? std::optional(allAIProviders.at(std::size_t(index))) : std::nullopt;
}

QString example(AIProvider provider)
{
    switch (provider) {
    case AIProvider::openRouter:
        return u"e.g. google/gemini-3.8-flash"_s;
    case AIProvider::openAI:
        return u"e.g. gpt-6-luna"_s;
    case AIProvider::custom:
        return u"e.g. llama3.2"_s;
    }
    Q_UNREACHABLE();
}

} // namespace

ModelChoiceListModel::ModelChoiceListModel(QObject *parent)
    : QAbstractListModel(parent)
{}

ModelChoiceListModel::~ModelChoiceListModel() = default;

void ModelChoiceListModel::setProviderIndex(int index)
{
    if (index == m_providerIndex) {
        return;
    }
    beginResetModel();
    m_providerIndex = index;
    const std::optional<AIProvider> provider = providerAt(index);
    m_presets = provider ? presets(*provider) : QList<AIModelPreset>();
    m_typedModel.clear();
    endResetModel();
    Q_EMIT providerChanged();
    Q_EMIT choiceChanged();
}

void ModelChoiceListModel::setModel(const QString &model)
{
    if (model != m_model) {
        m_model = model;
        Q_EMIT choiceChanged();
    }
}

void ModelChoiceListModel::setIsUsingCustomModel(bool isUsingCustomModel)
{
    if (isUsingCustomModel != m_isUsingCustomModel) {
        m_isUsingCustomModel = isUsingCustomModel;
        Q_EMIT choiceChanged();
    }
}

QString ModelChoiceListModel::placeholder() const
{
    const std::optional<AIProvider> provider = providerAt(m_providerIndex);
    return provider ? example(*provider) : QString();
}

int ModelChoiceListModel::currentIndex() const
{
    if (m_isUsingCustomModel) {
        return int(m_presets.size());
    }
    const auto found = std::find_if(m_presets.cbegin(), m_presets.cend(),
                                    [this](const auto &preset) { return preset.id == m_model; });
    return found == m_presets.cend() ? -1 : int(found - m_presets.cbegin());
}

QString ModelChoiceListModel::currentName() const
{
    const int row = currentIndex();
    return row < 0 ? QString() : data(index(row), NameRole).toString();
}

void ModelChoiceListModel::choose(int row)
{
    if (isCustomRow(row)) {
        Q_EMIT customChosen(m_isUsingCustomModel ? m_model : m_typedModel);
    } else if (row >= 0 && row < int(m_presets.size())) {
        if (m_isUsingCustomModel) {
            m_typedModel = m_model;
        }
        Q_EMIT presetChosen(m_presets.at(row).id);
    }
}

int ModelChoiceListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_presets.size()) + 1;
}

QVariant ModelChoiceListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const bool isCustom = isCustomRow(index.row());
    switch (role) {
    case NameRole:
        return isCustom ? customEntry : m_presets.at(index.row()).displayName;
    case NoteRole:
        return isCustom ? QString() : m_presets.at(index.row()).note;
    default:
        return {};
    }
}

QHash<int, QByteArray> ModelChoiceListModel::roleNames() const
{
    return {{NameRole, "name"}, {NoteRole, "note"}};
}

} // namespace vantrel
