#include "VornSandbox/SampleHistory/SampleText.h"

#include <array>
#include <span>

namespace vorn {
namespace {

// What the people of a sample history say. A '#' and a letter stand for a word of a list: #p places, #f food, #d days,
// #t times, #w people, #x topics, #n numbers, #e emoji, #h headings of a list.

using namespace std::string_view_literals;

using Words = std::span<const std::string_view>;

constexpr std::array promptSentences{
    "Can you find me a quiet place for dinner in #p on #d?"sv,
    "What should I pack for #n days in #p?"sv,
    "Remind me to call #w at #t on #d please"sv,
    "how long does #f keep in the fridge"sv,
    "I need a birthday idea for #w, something around #n euros"sv,
    "Summarise this for me: we talked about #x for #n minutes and agreed to meet again on #d"sv,
    "Is it going to rain in #p on #d?"sv,
    "Write a short note to #w about #x, friendly but not too long"sv,
    "ok thanks!! #e"sv,
    "What did I ask you about #x last week?"sv,
    "Give me a recipe with #f and #f that takes less than #n minutes"sv,
    "hmm not quite, can you make it shorter"sv,
    "Which train gets me to #p before #t?"sv,
    "I can't sleep. Tell me something calming about #x"sv,
    "Move my run with #w to #d, #t works for both of us"sv,
    "Perfect #e"sv,
    "Explain #x to me as if I had never heard of it"sv,
    "Can you split #n euros between #w, #w and me?"sv,
    "Actually let's do #d instead, #w can't make it"sv,
    "Do you think #w is still upset about #x? I don't know what to write back"sv,
    "Book a table for #n at #t, under my name, and ask whether they have something with #f"sv,
    "lol #e"sv,
    "Where did I park? I told you this morning"sv,
    "My landlord wants #n percent more from next year. What are my options?"sv,
    "Can you check my grammar: \"Me and #w was thinking about #x since #d\""sv,
    "yes"sv,
    "What's a good first book about #x?"sv,
    "My flight to #p leaves at #t, when should I be at the airport?"sv,
};

constexpr std::array replySentences{
    "Done! I'll remind you on #d at #t. #e"sv,
    "In #p it should stay dry until about #t, with a light breeze in the evening."sv,
    "Here are three ideas: a small course about #x, a good pan for #f, or an afternoon in #p with #w."sv,
    "I'd take the #t train: it is direct, and you would still have #n minutes before you meet #w."sv,
    "A pot of #f keeps for about three days in the fridge if you let it cool first and cover it."sv,
    "Short version: you agreed on #x, #w writes the first draft, and you all meet again on #d at #t."sv,
    "Good question. People usually start with #x because it gives them a feeling for everything that follows."sv,
    "Of course. \"Hi #w, thank you for thinking of me. I would love to hear more about #x, does #d work for you?\""sv,
    "I found a quiet place near the river in #p. They have a table for #n at #t, shall I ask for it?"sv,
    "That makes #n each, and I rounded in #w's favour."sv,
    "Sorry, I misread that. Let me try again with #d in mind."sv,
    "You mentioned it on #d: you were worried that #x would take longer than planned."sv,
    "Take layers, comfortable shoes and a small umbrella; evenings in #p are cooler than they look."sv,
    "Heat some oil, add the #f, wait #n minutes, then stir in the #f and a spoon of lemon juice."sv,
    "Breathe in slowly for four, hold for four, and out for six. Nothing has to be solved before tomorrow."sv,
    "It is not a bad sign when #w takes a day to answer. I would leave it until #d and then ask how they are."sv,
    "One thing I am not sure about: does #w eat #f? If not, I would choose the other place."sv,
    "Your sentence should read: \"#w and I have been thinking about #x since #d.\""sv,
    "Happy to help! #e"sv,
    "I would be at the airport two hours before, so leave home by #t at the latest."sv,
    "You can object in writing within two months, ask how they arrived at #n percent, or ask for an extension."sv,
    "#h\n• #x in the morning\n• lunch with #w at #t, maybe #f\n• a walk through #p before dinner"sv,
    "Noted. I moved your run to #d at #t and told #w."sv,
    "Think of #x as a big library: nothing is lost, but you only find it again when somebody wrote down where it is."sv,
};

constexpr std::array chatterSentences{
    "are you coming on #d?"sv,
    "running #n minutes late sorry #e"sv,
    "Mom says hi #e"sv,
    "did you see what #w posted about #x, I can't stop laughing"sv,
    "We should all go to #p again this summer"sv,
    "I left the #f on the stove for you, just warm it up"sv,
    "ok"sv,
    "call me when you can, nothing bad"sv,
    "Happy birthday!!! #e#e Hope you get lots of #f today"sv,
    "who has the tickets for #d at #t?"sv,
    "#w is asking whether we still need the tent"sv,
    "Landed in #p, all good. The weather is awful but the #f is great"sv,
};

constexpr std::array arabicPrompts{"هل يمكنك أن تجد لي مطعمًا هادئًا يوم الجمعة؟"sv,
                                   "ذكّرني أن أتصل بأمي الساعة #n من فضلك"sv, "شكرًا جزيلًا #e"sv};
constexpr std::array arabicReplies{
    "بالتأكيد! وجدت مكانًا جميلًا قرب النهر، وهناك طاولة لأربعة أشخاص في الساعة الثامنة مساءً."sv,
    "تم. سأذكّرك قبل الموعد بعشر دقائق. #e"sv, "الطقس غدًا مشمس، لكن المساء سيكون باردًا فخذ معك سترة خفيفة."sv};
constexpr std::array hebrewPrompts{"מה כדאי לבשל הערב עם #n עגבניות?"sv, "תזכיר לי להתקשר לסבתא מחר בבוקר"sv};
constexpr std::array hebrewReplies{
    "בשמחה! אפשר להכין שקשוקה: מחממים שמן, מוסיפים בצל ועגבניות, ואחרי עשרים דקות שוברים פנימה ביצים."sv,
    "רשמתי. אזכיר לך מחר בתשע. #e"sv};
constexpr std::array japanesePrompts{"明日の東京の天気を教えて"sv, "#n人で入れる静かな居酒屋を探してくれる？"sv,
                                     "ありがとう！#e"sv};
constexpr std::array japaneseReplies{
    "明日の東京は晴れのち曇り、最高気温は#n度の予想です。夕方は少し風が強くなりそうなので、上着があると安心ですよ。"sv,
    "駅から歩いて五分のところに、個室のある落ち着いたお店が見つかりました。予約しておきましょうか？"sv,
    "承知しました。金曜日の午後七時にお知らせします。#e"sv};
constexpr std::array chinesePrompts{"帮我写一封请假邮件，语气礼貌一点"sv, "北京到上海的高铁要多久？"sv};
constexpr std::array chineseReplies{
    "好的！这是一封简短的请假邮件：您好，我因家中有事，想在本周五请假一天，工作我会提前安排妥当，谢谢您的理解。"sv,
    "最快的一班大约需要四个半小时，早上七点和九点都有车。需要我提醒你买票吗？#e"sv};
constexpr std::array koreanPrompts{"오늘 저녁에 뭐 먹을까?"sv, "내일 아침 #n시에 깨워 줘"sv};
constexpr std::array koreanReplies{
    "따뜻한 국물이 있는 음식은 어떠세요? 집 근처에 평이 좋은 칼국수 집이 있고 지금은 기다리지 않아도 됩니다."sv,
    "네, 알려 드릴게요. 좋은 꿈 꾸세요! #e"sv};
constexpr std::array hindiPrompts{"क्या कल बारिश होगी?"sv, "#n लोगों के लिए एक आसान रेसिपी बताओ"sv};
constexpr std::array hindiReplies{"कल दोपहर तक मौसम साफ़ रहेगा, लेकिन शाम को हल्की बारिश हो सकती है, इसलिए छाता साथ रखिए।"sv,
                                  "ज़रूर! चावल और दाल की खिचड़ी बीस मिनट में बन जाती है और सबको पसंद आती है। #e"sv};
constexpr std::array russianPrompts{"Сколько хранится варёный рис в холодильнике?"sv,
                                    "Напомни мне в #n часов позвонить бабушке"sv};
constexpr std::array russianReplies{
    "Обычно три дня, если дать ему остыть и накрыть крышкой. Замороженный рис можно хранить до двух месяцев."sv,
    "Готово, напомню за десять минут. #e"sv};
constexpr std::array germanPrompts{"Kannst du mir für übermorgen einen Tisch für #n Personen suchen?"sv,
                                   "Wie lange dauert die Fahrt nach Köln?"sv};
constexpr std::array germanReplies{
    "Gern! Am Fluss gibt es ein ruhiges Lokal, das um halb acht noch einen Tisch draußen frei hat. Soll ich anfragen?"sv,
    "Mit dem Zug gut vier Stunden, mit dem Auto je nach Verkehr etwas länger. #e"sv};

/// Sentences of one other language for either side. Written right to left, without spaces, with combining marks, …
struct Language {
    std::string_view code;
    Words prompts;
    Words replies;
};

constexpr std::array languages{
    Language{"ar", arabicPrompts, arabicReplies},     Language{"he", hebrewPrompts, hebrewReplies},
    Language{"ja", japanesePrompts, japaneseReplies}, Language{"zh", chinesePrompts, chineseReplies},
    Language{"ko", koreanPrompts, koreanReplies},     Language{"hi", hindiPrompts, hindiReplies},
    Language{"ru", russianPrompts, russianReplies},   Language{"de", germanPrompts, germanReplies},
};

constexpr std::array places{"Lisbon"sv, "Kyoto"sv,    "the old town"sv, "Montréal"sv,  "Oaxaca"sv,
                            "Tromsø"sv, "Brooklyn"sv, "São Paulo"sv,    "Ljubljana"sv, "Edinburgh"sv};
constexpr std::array food{"lentils"sv,         "sourdough"sv, "mushrooms"sv,   "crème fraîche"sv, "kimchi"sv,
                          "roasted peppers"sv, "rice"sv,      "goat cheese"sv, "dumplings"sv,     "jalapeños"sv};
constexpr std::array days{"Monday"sv, "Tuesday"sv,  "Wednesday"sv, "Thursday"sv,
                          "Friday"sv, "Saturday"sv, "Sunday"sv,    "the weekend"sv};
constexpr std::array times{"7:30"sv, "noon"sv, "8 pm"sv, "18:45"sv, "a quarter past six"sv, "11 in the morning"sv};
constexpr std::array people{"Anna"sv,  "Jürgen"sv,         "Mei"sv,   "Zoë"sv, "my sister"sv, "Tomás"sv, "Priya"sv,
                            "Samir"sv, "the neighbours"sv, "Łukasz"sv};
constexpr std::array topics{
    "compound interest"sv,    "the night sky"sv, "our move"sv,    "the garden"sv, "learning the piano"sv,
    "the quarterly report"sv, "black holes"sv,   "the wedding"sv, "sleep"sv,      "old maps"sv};
constexpr std::array numbers{"2"sv, "3"sv, "4"sv, "6"sv, "7"sv, "8"sv, "12"sv, "15"sv, "25"sv, "40"sv};
constexpr std::array emoji{"😊"sv,
                           "🙏"sv,
                           "😂"sv,
                           "❤️"sv,
                           "👍🏽"sv,
                           "👩‍💻"sv,
                           "👨‍👩‍👧‍👦"sv,
                           "🏳️‍🌈"sv,
                           "🇩🇪"sv,
                           "🇯🇵"sv,
                           "1️⃣"sv,
                           "🎉"sv,
                           "🧑🏿‍🚀"sv,
                           "☕️"sv};
constexpr std::array headings{"Here is a plan for the day:"sv, "This is what I would do:"sv, "A relaxed version:"sv};

constexpr std::array paths{
    "https://www.example.com/restaurants/riverside"sv,
    "https://example.org/articles/why-we-sleep"sv,
    "https://shop.example.com/gifts/handmade-bowl"sv,
    "https://maps.example.net/place/old-harbour"sv,
    "http://www.example.edu/library/astronomy"sv,
    "https://recipes.example.com/lentil-soup"sv,
    "https://video.example.org/watch"sv,
    "https://travel.example.net/trains/night-line"sv,
};

/// The list behind a placeholder; empty for a letter that has none.
Words list(char placeholder) noexcept
{
    switch (placeholder) {
    case 'p': return places;
    case 'f': return food;
    case 'd': return days;
    case 't': return times;
    case 'w': return people;
    case 'x': return topics;
    case 'n': return numbers;
    case 'e': return emoji;
    case 'h': return headings;
    default: return {};
    }
}

constexpr unsigned otherLanguagePerMille = 80;

/// Puts a full stop after a letter or digit, and then `separator`.
void endSentence(char separator, std::string& into)
{
    const char last = into.back();
    const bool isOpen = (last >= 'a' && last <= 'z') || (last >= '0' && last <= '9');
    if (isOpen) into += '.';
    into += separator;
}

} // namespace

void SampleText::compose(SampleVoice voice, std::string& into)
{
    into.clear();
    auto patterns = voice == SampleVoice::prompt  ? Words(promptSentences)
                    : voice == SampleVoice::reply ? Words(replySentences)
                                                  : Words(chatterSentences);
    if (voice != SampleVoice::chatter && random_.chance(otherLanguagePerMille)) {
        const auto& language = random_.pick(std::span<const Language>(languages));
        patterns = voice == SampleVoice::prompt ? language.prompts : language.replies;
    }
    int sentences = random_.chance(450) ? 2 : 1;
    if (voice == SampleVoice::reply && random_.chance(450)) ++sentences;
    for (int i = 0; i < sentences; ++i) {
        if (i > 0) endSentence(i == 2 ? '\n' : ' ', into);
        sentence(random_.pick(patterns), into);
    }
}

void SampleText::sentence(std::string_view pattern, std::string& into)
{
    while (true) {
        const std::size_t at = pattern.find('#');
        into += pattern.substr(0, at);
        if (at == std::string_view::npos) return;
        into += random_.pick(list(pattern[at + 1]));
        pattern.remove_prefix(at + 2);
    }
}

void SampleText::link(std::string& into)
{
    into.assign(random_.pick(Words(paths)));
    if (!random_.chance(600)) return;
    std::string id;
    random_.hexadecimal(11, id);
    into += "?id=" + id;
    if (random_.chance(300)) into += "&utm_source=messages";
}

} // namespace vorn
