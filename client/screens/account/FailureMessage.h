#pragma once

#include <QString>

// The failure texts of the request pipeline as screens show them. A refused form arrives as the
// printed description of its first field error, e.g.
//     {
//         "human_name" = "\U8d26\U53f7";
//         message = "\U8bf7\U8f93\U5165";
//     }
// whose readable sentence is the "message" value followed by the "human_name" value ("请输入账号").
class FailureMessage
{
public:
    FailureMessage() = delete;

    // Splits `text` at ";" and joins the last cleaned piece holding "message" with the last
    // cleaned piece holding "human_name"; either part is empty when no piece holds it.
    static QString messageAndHumanName(const QString &text);

    // Whether `text` is such a printed description rather than a sentence of its own.
    static bool isFieldDescription(const QString &text);

    // What the user reads for `text`: the sentence inside a printed description, or the text
    // itself when it already is a sentence.
    static QString readable(const QString &text);
};
