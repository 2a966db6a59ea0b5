// The avatar upload, sent straight to the object-storage service with the store's credential.
#include "service/NetWorkHelper.h"

#include "util/AppConfig.h"

#include <QBuffer>

namespace {

QByteArray jpegAtFullQuality(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPEG", 100);
    return bytes;
}

} // namespace

void NetWorkHelper::uploadImageWithHeadImage(const QImage &headImage, const Object_QiNiu &qiNiu,
                                             const StartFn &startFn, const EndFn &endFn,
                                             const SuccessFn &successFn, const FailureFn &failureFn)
{
    RequestParams params;
    params.set(QStringLiteral("token"), qiNiu.token);
    params.set(QStringLiteral("x:account_id"), qiNiu.account_id);
    params.set(QStringLiteral("x:timestamp"), qiNiu.timestamp);
    params.set(QStringLiteral("x:tarvel_token"), qiNiu.tarvel_token);
    params.set(QStringLiteral("x:bucket_name"), qiNiu.bucket_name);

    QList<Object_UpFile> files;
    if (!headImage.isNull()) {
        Object_UpFile file;
        file.uploadFile = jpegAtFullQuality(headImage);
        file.uploadName = QStringLiteral("file");
        file.fileName = QStringLiteral("jpg");
        file.mimeType = QStringLiteral("image/jpeg");
        files.append(file);
    }
    responseWithParams(params, tarvel::config::uploadUrl(), files, startFn, endFn, successFn,
                       failureFn);
}
