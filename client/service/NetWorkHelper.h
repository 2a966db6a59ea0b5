#pragma once

#include "models/Object_QiNiu.h"
#include "models/Object_UpFile.h"
#include "service/AnswerCache.h"
#include "service/OfflineState.h"
#include "service/RequestParams.h"
#include "service/ServiceCallbacks.h"

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>

class QNetworkAccessManager;
class QNetworkReply;

// The one client of the store service. Every operation builds its request at once, calls StartFn
// synchronously, sends, and on completion calls EndFn once with the raw answer and then exactly one
// of SuccessFn and FailureFn (a validation failure whose "data" is not a dictionary stays silent
// after EndFn). All callbacks run on the main thread; nothing is retried, queued or cancelled.
class NetWorkHelper : public QObject
{
    Q_OBJECT
public:
    static constexpr int DefaultTimeoutMs = 15000;
    static constexpr int ProbeTimeoutMs = 5000;

    static NetWorkHelper *shareInstance();

    // The HTTP client: shared cookie store, transfer timeout DefaultTimeoutMs (tests lower it with
    // networkManager()->setTransferTimeout()).
    QNetworkAccessManager *networkManager() const { return m_networkManager; }

    // The catalogue's kept answers (under Library/Caches/answers): its GETs are answered from
    // them when the store cannot be reached, and offlineState() tells whether that happened.
    AnswerCache *answerCache() const { return m_answerCache.get(); }
    OfflineState *offlineState() const { return m_offlineState; }

    // Seconds since 1970 as the captcha address uses them; tests pin the clock.
    void setClock(std::function<double()> secondsSince1970);

    // The pipeline: a form POST of `params` to `url`, or a multipart POST when `arrayFile` holds
    // parts.
    void responseWithParams(const RequestParams &params, const QString &url,
                            const QList<Object_UpFile> &arrayFile, const StartFn &startFn,
                            const EndFn &endFn, const SuccessFn &successFn,
                            const FailureFn &failureFn);
    // The same wiring for a GET (params in the query) and a form PUT.
    void getWithParams(const RequestParams &params, const QString &url, const StartFn &startFn,
                       const EndFn &endFn, const SuccessFn &successFn, const FailureFn &failureFn);
    void putWithParams(const RequestParams &params, const QString &url, const StartFn &startFn,
                       const EndFn &endFn, const SuccessFn &successFn, const FailureFn &failureFn);

    // The store's envelope: the envelope on success, an empty dictionary when the service refused,
    // an invalid QVariant when the answer is unreadable.
    static QVariant parseResponse(const QVariant &responseObject, const SuccessFn &successFn,
                                  const FailureFn &failureFn);
    // The upload service's answer: the decoded answer when it holds "dest_url", else an empty
    // dictionary after FailureFn("上传失败").
    static QVariant parseQiNiuResponse(const QVariant &responseObject, const SuccessFn &successFn,
                                       const FailureFn &failureFn);
    // Escapes what may not appear in a URL; reserved characters such as "/?&=:" stay as they are.
    static QString encodingString(const QString &string);

    // Account and profile
    void signInWithAccountEmail(const QString &accountEmail, const QString &accountPassword,
                                const StartFn &startFn, const EndFn &endFn,
                                const SuccessFn &successFn, const FailureFn &failureFn);
    void registerWithLogin_name(const QString &loginName, const QString &pendingPhoneNumberToken,
                                const QString &password, const QString &passwordConfirmation,
                                const QString &captcha, const StartFn &startFn, const EndFn &endFn,
                                const SuccessFn &successFn, const FailureFn &failureFn);
    void getImageCodeWithStartFn(const StartFn &startFn, const EndFn &endFn,
                                 const SuccessFn &successFn, const FailureFn &failureFn);
    void getAuthCodeWithPhone_number(const QString &phoneNumber, const QString &captcha,
                                     const StartFn &startFn, const EndFn &endFn,
                                     const SuccessFn &successFn, const FailureFn &failureFn);
    void getAuthCodeForForgetPasswordWithPhone_number(const QString &phoneNumber,
                                                      const QString &captcha,
                                                      const QString &isUnlock,
                                                      const StartFn &startFn, const EndFn &endFn,
                                                      const SuccessFn &successFn,
                                                      const FailureFn &failureFn);
    void findPswWithphone_number(const QString &phoneNumber, const QString &captcha,
                                 const QString &pendingPhoneNumberToken, const QString &password,
                                 const QString &passwordConfirmation, const StartFn &startFn,
                                 const EndFn &endFn, const SuccessFn &successFn,
                                 const FailureFn &failureFn);
    void unlockPswWithphone_number(const QString &phoneNumber, const QString &captcha,
                                   const QString &pendingPhoneNumberToken, const StartFn &startFn,
                                   const EndFn &endFn, const SuccessFn &successFn,
                                   const FailureFn &failureFn);
    void findPswWithemail(const QString &email, const QString &captcha, const QString &isUnlock,
                          const StartFn &startFn, const EndFn &endFn, const SuccessFn &successFn,
                          const FailureFn &failureFn);
    void checkingMobileWithPhone_number(const QString &phoneNumber,
                                        const QString &pendingPhoneNumberToken,
                                        const QString &currentPassword, const StartFn &startFn,
                                        const EndFn &endFn, const SuccessFn &successFn,
                                        const FailureFn &failureFn);
    void bindingMobileWithPhone_number(const QString &phoneNumber,
                                       const QString &pendingPhoneNumberToken,
                                       const QString &currentPassword, const StartFn &startFn,
                                       const EndFn &endFn, const SuccessFn &successFn,
                                       const FailureFn &failureFn);
    void bindingEmailWithEmail(const QString &email, const QString &currentPassword,
                               const StartFn &startFn, const EndFn &endFn,
                               const SuccessFn &successFn, const FailureFn &failureFn);
    void modifyPasswordWithOldPass(const QString &oldPass, const QString &newPass,
                                   const QString &newPassToo, const StartFn &startFn,
                                   const EndFn &endFn, const SuccessFn &successFn,
                                   const FailureFn &failureFn);
    void getUserInfoWithStartFn(const StartFn &startFn, const EndFn &endFn,
                                const SuccessFn &successFn, const FailureFn &failureFn);
    void modifyUserInfoWithNick_name(const QString &nickName, const QString &gender,
                                     const QString &avatar, const StartFn &startFn,
                                     const EndFn &endFn, const SuccessFn &successFn,
                                     const FailureFn &failureFn);

    // Catalog
    void getHomepageDataWithStartFn(const StartFn &startFn, const EndFn &endFn,
                                    const SuccessFn &successFn, const FailureFn &failureFn);
    void getGameListWithType(const QString &type, const QString &page,
                             const MutableStartFn &startFn, const EndFn &endFn,
                             const SuccessFn &successFn, const FailureFn &failureFn);
    void getGameDetailWithGameId(const QString &gameId, const QString &verbose,
                                 const MutableStartFn &startFn, const EndFn &endFn,
                                 const SuccessFn &successFn, const FailureFn &failureFn);
    void searchGameWithQ(const QString &q, const QString &page, const MutableStartFn &startFn,
                         const EndFn &endFn, const SuccessFn &successFn,
                         const FailureFn &failureFn);

    // Cart, order and payment
    void getCartDataWithStartFn(const StartFn &startFn, const EndFn &endFn,
                                const SuccessFn &successFn, const FailureFn &failureFn);
    void removeGoodsFromCartWithGameIds(const QString &gameIds, const StartFn &startFn,
                                        const EndFn &endFn, const SuccessFn &successFn,
                                        const FailureFn &failureFn);
    void addGoodsToCartWithGameIds(const QString &gameId, const StartFn &startFn,
                                   const EndFn &endFn, const SuccessFn &successFn,
                                   const FailureFn &failureFn);
    void createOrderFromCartWithGameids(const QStringList &gameIds, const StartFn &startFn,
                                        const EndFn &endFn, const SuccessFn &successFn,
                                        const FailureFn &failureFn);
    void createOrderOneKeyWithGameId(const QString &gameId, const StartFn &startFn,
                                     const EndFn &endFn, const SuccessFn &successFn,
                                     const FailureFn &failureFn);
    void getOrderDetailWithOrderUrl(const QString &orderUrl, const StartFn &startFn,
                                    const EndFn &endFn, const SuccessFn &successFn,
                                    const FailureFn &failureFn);
    void getThirdPaymentDataWithPaymentMethod(const QString &paymentMethod, const QString &orderId,
                                              const QString &openID, const StartFn &startFn,
                                              const EndFn &endFn, const SuccessFn &successFn,
                                              const FailureFn &failureFn);
    void useCouponWithItem_type(const QString &itemType, const QString &code,
                                const QString &orderId, const StartFn &startFn, const EndFn &endFn,
                                const SuccessFn &successFn, const FailureFn &failureFn);
    void deleteCouponWithOrder_id(const QString &orderId, const QString &orderLineItemId,
                                  const QString &method, const StartFn &startFn, const EndFn &endFn,
                                  const SuccessFn &successFn, const FailureFn &failureFn);
    void queryOrderWithOrder_id(const QString &orderId, const StartFn &startFn, const EndFn &endFn,
                                const SuccessFn &successFn, const FailureFn &failureFn);
    void getMyOrderListWithType(const QString &type, const QString &page, const StartFn &startFn,
                                const EndFn &endFn, const SuccessFn &successFn,
                                const FailureFn &failureFn);
    void cancleMyOrderListWithOrderID(const QString &orderId, const StartFn &startFn,
                                      const EndFn &endFn, const SuccessFn &successFn,
                                      const FailureFn &failureFn);
    void getMyGamesWithStartFn(const StartFn &startFn, const EndFn &endFn,
                               const SuccessFn &successFn, const FailureFn &failureFn);

    // Avatar upload to the object-storage service
    void uploadImageWithHeadImage(const QImage &headImage, const Object_QiNiu &qiNiu,
                                  const StartFn &startFn, const EndFn &endFn,
                                  const SuccessFn &successFn, const FailureFn &failureFn);

private:
    enum class Verb { Get, Post, Put };
    // Whether the answer is kept, and given again when the store cannot be reached: only for
    // catalogue reads, never for anything that changes data or belongs to the user.
    enum class Keep { No, Yes };
    // Whether a request carries the signed-in user's "authenticity_token".
    enum class TokenRule {
        Always, // whenever someone is signed in
        IfSet // only when the signed-in user's token is not empty
    };

    NetWorkHelper();

    static void appendToken(RequestParams &params, TokenRule rule);
    // Refuses an SMS-code request while the resend countdown runs; true when it refused.
    static bool refuseWhileCountingDown(const FailureFn &failureFn);

    QNetworkReply *send(Verb verb, const QString &url, const RequestParams &params);
    QNetworkReply *sendMultipart(const QString &url, const RequestParams &params,
                                 const QList<Object_UpFile> &arrayFile);
    // GET/POST/PUT whose answer is the store's envelope; StartFn is the caller's business.
    // A GET whose StartFn may change the parameters before they are sent.
    void getWithEditableParams(RequestParams params, const QString &url,
                               const MutableStartFn &startFn, const EndFn &endFn,
                               const SuccessFn &successFn, const FailureFn &failureFn);
    void sendForEnvelope(Verb verb, const RequestParams &params, const QString &url,
                         const EndFn &endFn, const SuccessFn &successFn, const FailureFn &failureFn,
                         Keep keep = Keep::No);
    // Calls `completion` once when `reply` ends: whether it succeeded (no transport error and a
    // 2xx status), the body (invalid when nothing answered at all) and the transport error.
    using Completion
            = std::function<void(bool succeeded, const QVariant &body, const QVariant &error)>;
    void whenFinished(QNetworkReply *reply, Completion completion, Keep keep = Keep::No);
    // Sends one cheap GET to the store and tells `done` whether anything answered.
    void probeStore(std::function<void(bool reached)> done);
    static QString apiUrl(const QString &path); // ApiBaseUrl() + path, plain concatenation
    QString captchaPath() const;

    QNetworkAccessManager *m_networkManager = nullptr;
    std::unique_ptr<AnswerCache> m_answerCache;
    OfflineState *m_offlineState = nullptr;
    std::function<double()> m_clock;
};
