#include "tools/checker/documents/PlainTexts.h"

namespace quorvane::checker {

const std::u16string_view kWritingRules =
    u"What a check of grammar looks for:\n"
    u"\n"
    u"the the             a word twice\n"
    u"a apple, an horse   the article that the next word wants\n"
    u"could of            have\n"
    u"then i saw          the pronoun, with a capital\n"
    u"It rains. we stay.  the first word of a sentence, with a capital\n"
    u"wait ,              no blank before a mark\n"
    u"\n"
    u"A check of spelling looks for words that neither the dictionary nor "
    u"the word data knows. Names with capitals inside, words with digits, "
    u"addresses and text in another language are left alone.\n"
    u"\n"
    u"While you type, only what is certain is corrected. Which kinds of "
    u"mistakes those are says\n"
    u"    quorvane corrections switches\n"
    u"and on and off in the place of switches turns one of them.";

const std::u16string_view kPreferences =
    u"What you have set is listed and changed by quorvane settings:\n"
    u"\n"
    u"    quorvane settings list\n"
    u"    quorvane settings set completion.space on\n"
    u"    quorvane settings switches desk +spelling -grammar\n"
    u"    quorvane settings shortcut CkAl cmd+shift+s\n"
    u"    quorvane settings reset desk\n"
    u"\n"
    u"A word that it doesn't know gets the list of those that it does. The "
    u"switches of the application in front are in the Input Menu, too, under "
    u"Check While Typing.";

const std::u16string_view kAbout =
    u"Quorvane: the stand-in main application.\n"
    u"\n"
    u"It corrects what is typed while it is typed, checks a text that is "
    u"selected, and does so on this computer alone: nothing that you write "
    u"leaves it.";

const std::u16string_view kHelp =
    u"Check All selects the whole text, checks it, and puts the corrected "
    u"text in its place. Check Spelling, Check Grammar and both together "
    u"check what you have selected.\n"
    u"\n"
    u"In the window of a check a digit takes the suggestion with that "
    u"digit, Return the first; s leaves the word as it is; a takes the first "
    u"suggestion for it and for all that follow. Escape gives up, and the "
    u"text stays as it was.\n"
    u"\n"
    u"Check All and Mark Up puts the suggestion into the text beside what it "
    u"has found: [recieve: receive].\n"
    u"\n"
    u"Look Up in Dictionary explains the word that you have selected. "
    u"Statistics counts the words and sentences of what you have selected; "
    u"Graph of Sentences draws how long they are.\n"
    u"\n"
    u"The clipboard is afterwards as it was before.";

const std::u16string_view kNothingCopied =
    u"Nothing is selected, so nothing can be looked at. Select some text, then choose the command "
    u"again.";

const std::u16string_view kNoText = u"What is selected isn't text.";

const std::u16string_view kNotPasted =
    u"The corrected text is too long for the clipboard, or there is no input method that would "
    u"paste it. The text stays as it was.";

const std::u16string_view kNoDictionary =
    u"There is no dictionary, so nothing can be checked. For English that is the package "
    u"hunspell-en-us or aspell-en.";

}  // namespace quorvane::checker
