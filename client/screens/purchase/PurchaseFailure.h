#pragma once

#include <QString>

// The pipeline's failure texts as the purchase screens show them: a refused form's printed field
// description becomes its sentence, and a missing record ("RecordNotFound: 订单不存在") loses its
// code, so the customer reads one Chinese sentence.
class PurchaseFailure
{
public:
    PurchaseFailure() = delete;

    static QString readable(const QString &message);
};
