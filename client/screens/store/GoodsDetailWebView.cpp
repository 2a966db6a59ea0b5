#include "screens/store/GoodsDetailWebView.h"

#include <QTextDocument>
#include <QTimer>

namespace {

// A document that never reads pictures or style sheets, from the network or from disk.
class DetachedDocument : public QTextDocument
{
protected:
    QVariant loadResource(int type, const QUrl &name) override
    {
        Q_UNUSED(type)
        Q_UNUSED(name)
        return QVariant();
    }
};

} // namespace

GoodsDetailWebView::GoodsDetailWebView(QObject *parent)
    : QObject(parent)
{ }

void GoodsDetailWebView::loadHTMLString(const QString &html)
{
    m_loading = true;
    const quint64 generation = ++m_generation;
    QTimer::singleShot(0, this, [this, html, generation] {
        if (generation != m_generation)
            return;
        m_innerText = plainTextOfHtml(html);
        m_loading = false;
        emit didFinishLoad();
    });
}

QString GoodsDetailWebView::plainTextOfHtml(const QString &html)
{
    DetachedDocument document;
    document.setHtml(html);
    return document.toPlainText().trimmed();
}
