#include <cstring>
#include <random>
#include <vector>

#include "FuzzTarget.h"
#include "skin/SkinVocabulary.h"
#include "skinfunc/FunctionWords.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace dravik::fuzz {
namespace {

/// Function texts, their words and the keys of skins.
std::vector<std::string> Vocabulary() {
    std::vector<std::string> words = {"\n[mainmenu]\n",    "\nCommand=",        "_", ":", "&H",
                                      "\nCommonObjects0=", "\nButton0Up=b.png", "\n"};
    for (const auto& rows : {CommandRows(), TextFunctionRows(), NumberFunctionRows(),
                             ImageFunctionRows(), SourceRows()}) {
        for (const FunctionWord& row : rows) {
            words.push_back(ExampleOf(row));
            words.push_back(std::string(row.Word) + "_");
        }
    }
    for (const SkinKind* kind : SkinKinds()) {
        const std::string element = "\n" + std::string(kind->Word) + "0";
        words.push_back(element + "Function=");
        for (const SkinKey& key : kind->Keys) words.push_back(element + key.Name + "=");
    }
    return words;
}

}  // namespace
}  // namespace dravik::fuzz

/// Puts a word of the program's own vocabulary somewhere into every other input.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned seed) {
    static const std::vector<std::string> words = dravik::fuzz::Vocabulary();
    std::minstd_rand random(seed);
    const std::string& word = words[random() % words.size()];
    if (random() % 2 == 0 || size + word.size() > most) return LLVMFuzzerMutate(data, size, most);
    const std::size_t place = random() % (size + 1);
    std::memmove(data + place + word.size(), data + place, size - place);
    std::memcpy(data + place, word.data(), word.size());
    return size + word.size();
}
