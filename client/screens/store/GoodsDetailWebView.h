#pragma once

#include <QObject>
#include <QString>

// The off-screen HTML renderer of a game's page: it lays out the description's HTML (no base
// address, nothing fetched) and, one pass of the event loop later, reports that it has finished;
// its text is then what the page shows.
class GoodsDetailWebView : public QObject
{
    Q_OBJECT
public:
    explicit GoodsDetailWebView(QObject *parent = nullptr);

    // Starts rendering `html`; a later call replaces an unfinished one.
    void loadHTMLString(const QString &html);
    bool isLoading() const { return m_loading; }
    // The rendered text, paragraph by paragraph; empty until loaded.
    QString innerText() const { return m_innerText; }

    // The plain text a page of `html` shows. Pictures and other resources are not loaded.
    static QString plainTextOfHtml(const QString &html);

signals:
    void didFinishLoad();

private:
    QString m_innerText;
    bool m_loading = false;
    quint64 m_generation = 0;
};
