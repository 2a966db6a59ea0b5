#pragma once

#include <QString>

#include <array>

// The words the seeded catalogue is made of: Chinese names with their English counterparts.
namespace CatalogNames {

struct Pair
{
    const char16_t *chinese;
    const char *english;
};

inline constexpr std::array<Pair, 12> kPrefixes{{
        {u"星际", "Stellar"},
        {u"龙之", "Dragon"},
        {u"暗影", "Shadow"},
        {u"钢铁", "Iron"},
        {u"幻想", "Fantasy"},
        {u"失落", "Lost"},
        {u"极地", "Polar"},
        {u"深海", "Abyss"},
        {u"荒野", "Wild"},
        {u"霓虹", "Neon"},
        {u"古城", "Old Town"},
        {u"风暴", "Storm"},
}};

inline constexpr std::array<Pair, 10> kSuffixes{{
        {u"远征", "Expedition"},
        {u"传说", "Legends"},
        {u"王国", "Kingdom"},
        {u"猎人", "Hunter"},
        {u"纪元", "Era"},
        {u"战线", "Frontline"},
        {u"迷宫", "Labyrinth"},
        {u"车手", "Racer"},
        {u"农场", "Farm"},
        {u"编年史", "Chronicles"},
}};

inline constexpr std::array<Pair, 6> kDlcNames{{
        {u"冰封之地", "Frozen Lands"},
        {u"原声音乐集", "Original Soundtrack"},
        {u"季票", "Season Pass"},
        {u"黄金武器包", "Golden Weapons Pack"},
        {u"新手礼包", "Starter Pack"},
        {u"最终章", "Final Chapter"},
}};

inline constexpr std::array<Pair, 5> kCollections{{
        {u"动作精选合集", "Action Collection"},
        {u"独立游戏合集", "Indie Collection"},
        {u"策略大师合集", "Strategy Masters Collection"},
        {u"合家欢合集", "Family Fun Collection"},
        {u"经典角色扮演合集", "Classic RPG Collection"},
}};

inline constexpr std::array<const char16_t *, 12> kTags{u"动作", u"冒险", u"角色扮演", u"策略",
                                                        u"模拟", u"竞速", u"体育",     u"独立",
                                                        u"休闲", u"射击", u"解谜",     u"多人"};

inline constexpr std::array<const char16_t *, 6> kLanguages{u"繁体中文", u"英语", u"日语",
                                                            u"韩语",     u"德语", u"法语"};

inline constexpr std::array<const char16_t *, 6> kPublishers{u"星河互娱",   u"Northwind Games",
                                                             u"青石工作室", u"Blue Harbor",
                                                             u"千山游戏",   u"Aurora Interactive"};

inline constexpr std::array<const char16_t *, 8> kDevelopers{
        u"白鹭工作室", u"Red Kite Studio", u"远山互动",     u"Pixel Orchard",
        u"雾岛游戏",   u"Lantern Works",   u"铁匠铺工作室", u"Moonrise Games"};

struct Carrier
{
    const char16_t *pubtype;
    const char *installType;
    const char16_t *client;
};

inline constexpr std::array<Carrier, 4> kCarriers{{
        {u"Steam 激活码", "steam", u"Steam"},
        {u"Uplay 激活码", "uplay", u"Uplay"},
        {u"Origin 激活码", "origin", u"Origin"},
        {u"独立客户端", "standalone", u"Tarvel 游戏库"},
}};

inline constexpr std::array<const char16_t *, 6> kSentences{
        u"在广袤的世界中自由探索，揭开隐藏在历史背后的秘密。",
        u"与好友组队，挑战越来越强大的敌人。",
        u"精心打造的剧情带来数十小时的沉浸式体验。",
        u"丰富的自定义系统让每一次冒险都与众不同。",
        u"手绘风格的画面与原创配乐相得益彰。",
        u"策略与操作并重，每一个决定都影响战局。"};

inline constexpr std::array<const char16_t *, 6> kFeatures{
        u"支持简体中文界面与字幕", u"超过40小时的主线剧情", u"在线合作模式，最多4人",
        u"创意工坊支持",           u"全程手柄支持",         u"云存档同步"};

inline constexpr std::array<int, 12> kGamePrices{18, 28, 38,  48,  58,  68,
                                                 88, 98, 128, 168, 198, 248};
inline constexpr std::array<int, 6> kDlcPrices{12, 18, 22, 28, 35, 45};

inline QString text(const char16_t *chinese)
{
    return QString::fromUtf16(chinese);
}

} // namespace CatalogNames
