#pragma once

#include "ai/config/AIModelPreset.h"

#include <QAbstractListModel>
#include <qqml.h>

#include <optional>

namespace vantrel {

/// The models that a provider suggests, and behind them the entry for an identifier that the person
/// types. It shows the choice that it is told and asks for another one. What was typed is kept
/// while a suggestion is chosen, until the provider changes. Thread: interface.
class ModelChoiceListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int providerIndex READ providerIndex WRITE setProviderIndex NOTIFY providerChanged)
    Q_PROPERTY(QString model READ model WRITE setModel NOTIFY choiceChanged)
    Q_PROPERTY(bool isUsingCustomModel READ isUsingCustomModel WRITE setIsUsingCustomModel NOTIFY
                   choiceChanged)
    Q_PROPERTY(bool hasPresets READ hasPresets NOTIFY providerChanged)
    Q_PROPERTY(QString placeholder READ placeholder NOTIFY providerChanged)
    Q_PROPERTY(int currentIndex READ currentIndex NOTIFY choiceChanged)
    Q_PROPERTY(QString currentName READ currentName NOTIFY choiceChanged)

public:
    enum Role {
        NameRole = Qt::UserRole + 1, ///< QString
        NoteRole,                    ///< QString: empty for the custom entry
    };

    explicit ModelChoiceListModel(QObject *parent = nullptr);
    ~ModelChoiceListModel() override;

    /// The provider's place in `allAIProviders`; nothing is suggested for any other number.
    [[nodiscard]] int providerIndex() const { return m_providerIndex; }
    void setProviderIndex(int index);

    /// The choice that is shown.
    [[nodiscard]] const QString &model() const { return m_model; }
    void setModel(const QString &model);
    [[nodiscard]] bool isUsingCustomModel() const { return m_isUsingCustomModel; }
    void setIsUsingCustomModel(bool isUsingCustomModel);

    [[nodiscard]] bool hasPresets() const { return !m_presets.isEmpty(); }

    /// An example of what can be typed.
    [[nodiscard]] QString placeholder() const;

    /// The row of the choice; -1 for a model that is neither suggested nor typed.
    [[nodiscard]] int currentIndex() const;
    [[nodiscard]] QString currentName() const;

    /// Asks for the choice of a row.
    Q_INVOKABLE void choose(int row);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void providerChanged();
    void choiceChanged();
    void presetChosen(const QString &id);
    void customChosen(const QString &text); ///< With what was typed for this provider before.

private:
    [[nodiscard]] bool isCustomRow(int row) const { return row == int(m_presets.size()); }

    int m_providerIndex = -1;
    QList<AIModelPreset> m_presets{};
    QString m_model{};
    bool m_isUsingCustomModel = false;
    QString m_typedModel{};
};

} // namespace vantrel
