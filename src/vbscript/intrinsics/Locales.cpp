#include "vbscript/intrinsics/Locales.hpp"

#include "vbscript/values/Text16.hpp"

namespace hearthmake::vbscript {

namespace {

struct Locale {
  std::u16string_view name;
  std::int32_t id;
};

// The first of a language is the one that the language alone stands for.
constexpr Locale kLocales[] = {
    {u"af-za", 0x0436}, {u"sq-al", 0x041C}, {u"ar-sa", 0x0401}, {u"ar-iq", 0x0801}, {u"ar-eg", 0x0C01},
    {u"ar-ly", 0x1001}, {u"ar-dz", 0x1401}, {u"ar-ma", 0x1801}, {u"ar-tn", 0x1C01}, {u"ar-om", 0x2001},
    {u"ar-ye", 0x2401}, {u"ar-sy", 0x2801}, {u"ar-jo", 0x2C01}, {u"ar-lb", 0x3001}, {u"ar-kw", 0x3401},
    {u"ar-ae", 0x3801}, {u"ar-bh", 0x3C01}, {u"ar-qa", 0x4001}, {u"hy-am", 0x042B}, {u"eu-es", 0x042D},
    {u"be-by", 0x0423}, {u"bg-bg", 0x0402}, {u"ca-es", 0x0403}, {u"zh-cn", 0x0804}, {u"zh-tw", 0x0404},
    {u"zh-hk", 0x0C04}, {u"zh-sg", 0x1004}, {u"hr-hr", 0x041A}, {u"cs-cz", 0x0405}, {u"da-dk", 0x0406},
    {u"nl-nl", 0x0413}, {u"nl-be", 0x0813}, {u"en-us", 0x0409}, {u"en-gb", 0x0809}, {u"en-au", 0x0C09},
    {u"en-ca", 0x1009}, {u"en-nz", 0x1409}, {u"en-ie", 0x1809}, {u"en-za", 0x1C09}, {u"en-jm", 0x2009},
    {u"en-cb", 0x2409}, {u"en-bz", 0x2809}, {u"en-tt", 0x2C09}, {u"en-zw", 0x3009}, {u"en-ph", 0x3409},
    {u"et-ee", 0x0425}, {u"fo-fo", 0x0438}, {u"fa-ir", 0x0429}, {u"fi-fi", 0x040B}, {u"fr-fr", 0x040C},
    {u"fr-be", 0x080C}, {u"fr-ca", 0x0C0C}, {u"fr-ch", 0x100C}, {u"fr-lu", 0x140C}, {u"mk-mk", 0x042F},
    {u"de-de", 0x0407}, {u"de-ch", 0x0807}, {u"de-at", 0x0C07}, {u"de-lu", 0x1007}, {u"de-li", 0x1407},
    {u"el-gr", 0x0408}, {u"he-il", 0x040D}, {u"hi-in", 0x0439}, {u"hu-hu", 0x040E}, {u"is-is", 0x040F},
    {u"id-id", 0x0421}, {u"it-it", 0x0410}, {u"it-ch", 0x0810}, {u"ja-jp", 0x0411}, {u"ko-kr", 0x0412},
    {u"lv-lv", 0x0426}, {u"lt-lt", 0x0427}, {u"ms-my", 0x043E}, {u"mt-mt", 0x043A}, {u"mr-in", 0x044E},
    {u"no-no", 0x0414}, {u"nb-no", 0x0414}, {u"nn-no", 0x0814}, {u"pl-pl", 0x0415}, {u"pt-br", 0x0416},
    {u"pt-pt", 0x0816}, {u"ro-ro", 0x0418}, {u"ru-ru", 0x0419}, {u"sa-in", 0x044F}, {u"sr-sp", 0x081A},
    {u"sk-sk", 0x041B}, {u"sl-si", 0x0424}, {u"es-es", 0x040A}, {u"es-mx", 0x080A}, {u"es-gt", 0x100A},
    {u"es-cr", 0x140A}, {u"es-pa", 0x180A}, {u"es-do", 0x1C0A}, {u"es-ve", 0x200A}, {u"es-co", 0x240A},
    {u"es-pe", 0x280A}, {u"es-ar", 0x2C0A}, {u"es-ec", 0x300A}, {u"es-cl", 0x340A}, {u"es-uy", 0x380A},
    {u"es-py", 0x3C0A}, {u"es-bo", 0x400A}, {u"es-sv", 0x440A}, {u"es-hn", 0x480A}, {u"es-ni", 0x4C0A},
    {u"es-pr", 0x500A}, {u"sw-ke", 0x0441}, {u"sv-se", 0x041D}, {u"sv-fi", 0x081D}, {u"ta-in", 0x0449},
    {u"tt-ru", 0x0444}, {u"th-th", 0x041E}, {u"tr-tr", 0x041F}, {u"uk-ua", 0x0422}, {u"ur-pk", 0x0420},
    {u"uz-uz", 0x0443}, {u"vi-vn", 0x042A},
};

constexpr std::int32_t kLanguageBits = 0x3FF;

}  // namespace

std::optional<std::int32_t> LocaleOfName(std::u16string_view name) {
  for (const Locale& locale : kLocales) {
    const bool isLanguage = name.size() == 2 && EqualsIgnoreCase(locale.name.substr(0, 2), name);
    if (isLanguage || EqualsIgnoreCase(locale.name, name)) return locale.id;
  }
  return std::nullopt;
}

std::optional<std::int32_t> LocaleOfId(std::int32_t id) {
  for (const Locale& locale : kLocales) {
    if (locale.id == id || (id > 0 && id <= kLanguageBits && (locale.id & kLanguageBits) == id))
      return locale.id;
  }
  return std::nullopt;
}

}  // namespace hearthmake::vbscript
