#pragma once

// The outside services' credentials, compiled into the app. These are the sandbox's: tarvel-store
// plays WeChat payment for WeChatAppId and runs the push channel, so the app works end to end
// without any outside account. A deployment replaces them with its own.
namespace tarvel::kits {

// The sharing service: 12 lowercase hexadecimal characters.
inline constexpr const char *ShareSDKAppKey = "e18b7e2cebe0";

// Sina Weibo: a 10-digit key, a 32-character lowercase hexadecimal secret, Weibo's default OAuth
// page as the redirect address.
inline constexpr const char *SinaWeiboAppKey = "0631431896";
inline constexpr const char *SinaWeiboAppSecret = "3a9debbd0dbacb01499d689f0ce19136";
inline constexpr const char *SinaWeiboRedirectUri = "https://api.weibo.com/oauth2/default.html";

// WeChat: "wx" and 16 lowercase hexadecimal characters (the id the store's payments are made
// for), and a 32-character lowercase hexadecimal secret.
inline constexpr const char *WeChatAppId = "wx7d3b5f1a9c2e4860";
inline constexpr const char *WeChatAppSecret = "1d0317c636f93f8e5270d228db8843f3";

// The push service: 22 letters and digits each.
inline constexpr const char *GeTuiAppId = "uwcY51Fz4LkOgVOTeMeRQ0";
inline constexpr const char *GeTuiAppKey = "abCZPtjnrhg7Dxo0NXLDT7";
inline constexpr const char *GeTuiAppSecret = "fXmC1TTVXoIIBWkWwIzjk4";

} // namespace tarvel::kits
