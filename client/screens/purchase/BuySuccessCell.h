#pragma once

#include <QString>
#include <QVariantMap>

// One line of the purchase result: its text and whether the separator under it shows.
class BuySuccessCell
{
public:
    void setCellContentWithTitle(const QString &title, bool separatorHidden);

    QString labelTitle() const { return m_labelTitle; }
    bool isSeparatorHidden() const { return m_separatorHidden; }

    // What the list binds: title, separatorHidden.
    QVariantMap toRow() const;

private:
    QString m_labelTitle;
    bool m_separatorHidden = false;
};
