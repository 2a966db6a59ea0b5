#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QStringList>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace platform {

// Rows of display-ready values for a QML list or grid. Each key of a row is a role of the same
// name; the role "row" gives the whole map. Roles are the declared ones plus every key seen, in
// the order first seen; a view reads the roles it knows when it first binds, so keys that appear
// only later are best declared up front (or read through "row").
//
// Rows come either from setRows/appendRows or from a provider that reloadData() asks again, the
// way a table asks its data source.
class RowModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Row models are made by the screen controllers")
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    using Provider = std::function<QList<QVariantMap>()>;

    explicit RowModel(QObject *parent = nullptr);
    explicit RowModel(const QStringList &roles, QObject *parent = nullptr);

    void setProvider(Provider provider) { m_provider = std::move(provider); }
    // Asks the provider for all rows again (nothing happens without one).
    Q_INVOKABLE void reloadData();

    QList<QVariantMap> rows() const { return m_rows; }
    void setRows(const QList<QVariantMap> &rows);
    void appendRows(const QList<QVariantMap> &rows);
    bool updateRow(int index, const QVariantMap &row);
    bool removeRow(int index);
    void clear() { setRows({}); }

    int count() const { return int(m_rows.size()); }
    Q_INVOKABLE QVariantMap get(int index) const { return m_rows.value(index); }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    static constexpr int RowRole = Qt::UserRole + 1;

signals:
    void countChanged();

private:
    void learnRoles(const QList<QVariantMap> &rows);

    QList<QVariantMap> m_rows;
    QList<QByteArray> m_roleKeys; // role RowRole + 1 + i is m_roleKeys[i]
    Provider m_provider;
};

} // namespace platform
