#pragma once

class Router;

// Each API family adds its routes; store/API.md describes every one of them.
namespace Handlers {
void installCatalog(Router &router);
void installAccount(Router &router);
void installRecovery(Router &router);
void installSetting(Router &router);
void installCart(Router &router);
void installOrder(Router &router);
void installPicture(Router &router);
void installWebPages(Router &router);
void installHelpPages(Router &router); // the help site and the company pages
} // namespace Handlers

namespace SandboxHandlers {
void installOutbox(Router &router); // outbox, captcha answers
void installUpload(Router &router);
void installWeChat(Router &router);
void installPush(Router &router);
} // namespace SandboxHandlers
