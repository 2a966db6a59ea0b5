#include "StoreContext.h"
#include "accounts/UploadCredentials.h"
#include "core/Crypto.h"
#include "handlers/Handlers.h"
#include "http/Exchange.h"
#include "pictures/PictureLimits.h"

#include <httplib.h>

#include <QDir>
#include <QImage>
#include <QSaveFile>

// The object-storage sandbox: POST /sandbox/qiniu/upload takes the credential fields and a "file"
// part, keeps JPEG and PNG pictures up to 5 MB, and answers {"dest_url"} or {"error"}, the way
// the storage service does (no store envelope).
namespace {

constexpr size_t kMaxFileBytes = 5 * 1024 * 1024;

struct Refusal
{
    int status;
    QString message;
};

QString part(const httplib::Request &request, const char *name)
{
    if (!request.has_file(name))
        return {};
    return QString::fromUtf8(request.get_file_value(name).content).trimmed().left(256);
}

// "jpg" or "png" by the file's signature, else nothing.
QString pictureSuffix(const std::string &content)
{
    static const std::string jpeg("\xFF\xD8\xFF", 3);
    static const std::string png("\x89PNG\r\n\x1A\n", 8);
    if (content.compare(0, jpeg.size(), jpeg) == 0)
        return QStringLiteral("jpg");
    if (content.compare(0, png.size(), png) == 0)
        return QStringLiteral("png");
    return {};
}

bool decodes(const QByteArray &bytes, const QString &suffix)
{
    return !QImage::fromData(bytes, suffix == QLatin1String("jpg") ? "JPG" : "PNG").isNull();
}

void saveFile(const QString &path, const std::string &content)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)
        || file.write(content.data(), qint64(content.size())) != qint64(content.size())
        || !file.commit())
        throw std::runtime_error("the uploaded picture could not be saved");
}

void upload(Exchange &exchange)
{
    const httplib::Request &request = exchange.request();
    auto refuse = [&](int status, const QString &message) {
        exchange.sendJson(status, QJsonObject{{QStringLiteral("error"), message}});
    };
    if (!request.is_multipart_form_data())
        return refuse(400, QStringLiteral("请以 multipart/form-data 上传"));
    if (!request.has_file("file"))
        return refuse(400, QStringLiteral("缺少文件"));
    const std::string &content = request.get_file_value("file").content;
    if (content.size() > kMaxFileBytes)
        return refuse(413, QStringLiteral("图片不能超过5MB"));
    const QString suffix = pictureSuffix(content);
    const QByteArray bytes = QByteArray::fromRawData(content.data(), qsizetype(content.size()));
    const QSize declared = suffix.isEmpty() ? QSize() : PictureLimits::declaredSize(bytes);
    if (!declared.isValid())
        return refuse(415, QStringLiteral("只接受 JPEG 或 PNG 图片"));
    // The declared size is checked before the picture is decoded.
    if (!PictureLimits::acceptable(declared))
        return refuse(422, PictureLimits::refusal());
    if (!decodes(bytes, suffix))
        return refuse(415, QStringLiteral("只接受 JPEG 或 PNG 图片"));

    const UploadCredentials::Fields fields{
            part(request, "token"), part(request, "x:account_id"), part(request, "x:timestamp"),
            part(request, "x:tarvel_token"), part(request, "x:bucket_name")};
    const QString name = QString::fromLatin1(Crypto::randomToken(16)) + QLatin1Char('.') + suffix;
    const bool stored = exchange.store().database().write([&](SQLite::Database &db) {
        const auto accountId = UploadCredentials::consume(db, fields, exchange.now());
        if (!accountId)
            return false;
        SQLite::Statement insert(db, "INSERT INTO uploads (name, account_id, content_type, size, "
                                     "created_at) VALUES (?, ?, ?, ?, ?)");
        Sql::bind(insert, 1, name);
        insert.bind(2, static_cast<int64_t>(*accountId));
        insert.bind(3, suffix == QLatin1String("png") ? "image/png" : "image/jpeg");
        insert.bind(4, static_cast<int64_t>(content.size()));
        insert.bind(5, static_cast<int64_t>(exchange.now()));
        insert.exec();
        saveFile(QDir(exchange.store().uploadsDirectory()).filePath(name), content);
        return true;
    });
    if (!stored)
        return refuse(401, QStringLiteral("上传凭证无效或已过期"));
    exchange.sendJson(200, QJsonObject{{QStringLiteral("dest_url"),
                                        exchange.baseUrl() + QStringLiteral("/uploads/") + name},
                                       {QStringLiteral("key"), name}});
}

} // namespace

void SandboxHandlers::installUpload(Router &router)
{
    router.add("POST", "/sandbox/qiniu/upload", upload);
}
