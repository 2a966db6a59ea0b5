#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

// One row of the game detail table. One class, several layouts chosen by the identifier
// ("GoodsDetailCell1" ... "GoodsDetailCell7"): a warning line with an icon, a label-value fact, a
// link row with a see button, free text. A hidden cell keeps its place in the table and collapses
// to no height.
class GoodsDetailCell
{
public:
    // Link rows: which related items the see button opens.
    enum LinkType { BundlesLink = 0, DlcsLink = 1, BaseGameLink = 2 };

    explicit GoodsDetailCell(const QString &identifier = QString());

    // The fixed notice of the blocked-game layout ("GoodsDetailCell1").
    static QString blockedNotice();

    // A warning line: `title` beside the picture `icon`; `type` picks its tone.
    void setCellContentWithTitle(const QString &title, const QString &icon, int type);
    // A fact row: the label `tag` and its value `title`.
    void setCellContentWithTag(const QString &tag, const QString &title);
    // A link row: `title` styled by `type` (a LinkType); the part to stress is `emphasis`.
    void setCellContentWithType(int type, const QString &title, const QString &emphasis = {});
    // Free text (the description).
    void setCellContentWithContent(const QString &content);

    QString identifier() const { return m_identifier; }
    QString labelTag() const { return m_labelTag; }
    QString labelTitle() const { return m_labelTitle; }
    QString imageIcon() const { return m_imageIcon; }
    int type() const { return m_type; }
    // The title in three parts: before the emphasised part, that part (empty when there is none)
    // and after it. The view colours the middle one by the link's type.
    QStringList titleParts() const;

    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden) { m_hidden = hidden; }
    // The see button's tag; -1 when the layout has no see button.
    int buttonLookTag() const { return m_buttonLookTag; }
    void setButtonLookTag(int tag) { m_buttonLookTag = tag; }

    // Display-ready values for the view: identifier, tag, title, titleParts, icon, type,
    // lookTag, hidden.
    QVariantMap toRow() const;

private:
    QString m_identifier;
    QString m_labelTag;
    QString m_labelTitle;
    QString m_emphasis;
    QString m_imageIcon;
    int m_type = -1;
    int m_buttonLookTag = -1;
    bool m_hidden = false;
};
