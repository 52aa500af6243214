#include "enterprise/refusal.h"

#include <array>
#include <string_view>

namespace tandril::enterprise {
namespace {

using Reason = Refusal::Reason;

// "%" stands for the offending value.
struct Sentence {
    Reason reason;
    std::string_view english;
    std::string_view german;
    std::string_view dutch;
};

constexpr std::array sentences{
    Sentence{Reason::UnknownOrder, "The office does not know this order.",
             "Das Büro kennt diesen Auftrag nicht.", "Het kantoor kent deze order niet."},
    Sentence{Reason::UnknownActivity, "The office does not know this activity.",
             "Das Büro kennt diese Aktivität nicht.", "Het kantoor kent deze activiteit niet."},
    Sentence{Reason::ClosedOrder, "The office has closed this order; the next download says why.",
             "Das Büro hat diesen Auftrag geschlossen; der nächste Download nennt den Grund.",
             "Het kantoor heeft deze order gesloten; de volgende download noemt de reden."},
    Sentence{Reason::UnknownConfiguration, "There is no configuration %.",
             "Eine Anlage % gibt es nicht.", "Er is geen installatie %."},
    Sentence{Reason::FinishBeforeStart, "The work ends before it begins.",
             "Die Arbeit endet, bevor sie beginnt.", "Het werk eindigt voordat het begint."},
    Sentence{Reason::HoursOutOfRange, "The hours must be a number above 0 and up to 24, not %.",
             "Die Stunden müssen eine Zahl über 0 und bis 24 sein, nicht %.",
             "De uren moeten een getal boven 0 en tot en met 24 zijn, niet %."},
    Sentence{Reason::TooManyHoursOnADay, "That makes % hours on one day, more than 24.",
             "Das ergibt % Stunden an einem Tag, mehr als 24.",
             "Dat maakt % uren op één dag, meer dan 24."},
    Sentence{Reason::UnknownItem, "There is no item %.", "Einen Artikel % gibt es nicht.",
             "Er is geen artikel %."},
    Sentence{Reason::QuantityNotPositive, "The quantity must be a number above 0, not %.",
             "Die Menge muss eine Zahl über 0 sein, nicht %.",
             "Het aantal moet een getal boven 0 zijn, niet %."},
    Sentence{Reason::AmountNotANumber, "The amount must be a number from 0 on, not %.",
             "Der Betrag muss eine Zahl ab 0 sein, nicht %.",
             "Het bedrag moet een getal vanaf 0 zijn, niet %."},
    Sentence{Reason::AmountNeedsApproval, "Amounts above 5000 need an approval first: %.",
             "Beträge über 5000 müssen zuerst genehmigt werden: %.",
             "Bedragen boven 5000 moeten eerst worden goedgekeurd: %."}};

std::string_view sentenceOf(Reason reason, Language language) {
    for (const Sentence& sentence : sentences) {
        if (sentence.reason != reason) continue;
        if (language == Language::German) return sentence.german;
        return language == Language::Dutch ? sentence.dutch : sentence.english;
    }
    return "";
}

}  // namespace

std::string describe(const Refusal& refusal, Language language) {
    std::string text(sentenceOf(refusal.reason, language));
    if (const auto at = text.find('%'); at != std::string::npos) {
        text.replace(at, 1, "\"" + refusal.detail + "\"");
    }
    return text;
}

}  // namespace tandril::enterprise
