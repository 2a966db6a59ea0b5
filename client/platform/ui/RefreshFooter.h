#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace platform {

// The load-more footer of a list or grid. Scrolling to the end of the list asks the controller for
// the next page; the controller ends the load, or marks that there is no more data. After that,
// scrolling no longer asks, but a deliberate pull past the end (or a tap on the footer) asks again:
// the list may have grown since.
class RefreshFooter : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(RefreshFooterState)
    Q_PROPERTY(State state READ state NOTIFY stateChanged)
    Q_PROPERTY(QString text READ text NOTIFY stateChanged)
    Q_PROPERTY(bool loading READ isLoading NOTIFY stateChanged)
    Q_PROPERTY(bool hidden READ isHidden WRITE setHidden NOTIFY hiddenChanged)
public:
    enum State { Idle, Loading, NoMoreData };
    Q_ENUM(State)

    explicit RefreshFooter(QObject *parent = nullptr);

    State state() const { return m_state; }
    QString text() const;
    bool isLoading() const { return m_state == Loading; }
    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden);

    // The end of the list came into view.
    Q_INVOKABLE void reachEnd();
    // The user pulled past the end of the list or tapped the footer.
    Q_INVOKABLE void pullUp();
    Q_INVOKABLE void beginRefreshing();
    Q_INVOKABLE void endRefreshing();
    Q_INVOKABLE void noticeNoMoreData();
    Q_INVOKABLE void resetNoMoreData();

signals:
    void stateChanged();
    void hiddenChanged();
    void loadMoreRequested();

private:
    void setState(State state);

    State m_state = Idle;
    bool m_hidden = false;
};

} // namespace platform
