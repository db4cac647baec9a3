#pragma once

namespace zarquette
{

// One recording of a sample set: its resource name (stored upper-cased, found
// without regard to case) and its group, from the calmest (0) up.
struct SampleSetEntry
{
    const char* name;
    int group;
};

// The two sets the cat army chooses from, each sorted by group so that every
// group's recordings are contiguous. Header-only: the recordings generator
// builds its images from the same lists.
struct SampleSet
{
    const SampleSetEntry* entries;
    int size;

    // Cats: calm calls (0), louder arguments and caterwauls (1), furious hisses
    // and fights (2).
    static SampleSet get_cats();
    // A girl's voice: calm (0) and excited (1) syllables.
    static SampleSet get_voices();
};

namespace sample_set_data
{

inline constexpr SampleSetEntry cats[] = {
    {"casmews1_1", 0}, {"casmews1_2", 0}, {"casmews1_3", 0}, {"casmews3_1", 0}, {"casmews3_2", 0},
    {"casmews4_1", 0}, {"cat-meow", 0}, {"cat", 0}, {"cat02_1", 0}, {"cat02_2", 0}, {"cat02_3", 0},
    {"cat02_4", 0}, {"cat02_5", 0}, {"cat02_6", 0}, {"cat02_7", 0}, {"cat02_8", 0}, {"cat02_9", 0},
    {"chat", 0}, {"chat4", 0}, {"chaton-1", 0}, {"itta", 0}, {"lomavit_1", 0}, {"lomavit_2", 0},
    {"kitten01_10", 0}, {"kitten01_11", 0}, {"kitten01_2", 0}, {"kitten01_3", 0}, {"kitten01_4", 0},
    {"kitten01_6", 0}, {"kitten01_8", 0}, {"kitten01_9", 0}, {"kittenmeow_1", 0},
    {"kittenmeow_2", 0}, {"lostkitten", 0}, {"meow", 0}, {"meow2-2", 0}, {"meow2", 0}, {"meow3", 0},
    {"meow4", 0}, {"meow5", 0}, {"meow7", 0}, {"meow8", 0}, {"miaou1", 0}, {"mraur1", 0},
    {"scaredkitten_1", 0}, {"scaredkitten_2", 0}, {"scaredkitten_3", 0}, {"talkingcat1_1", 0},
    {"talkingcat1_2", 0}, {"talkingcat1_3", 0}, {"talkingcat1_4", 0},
    {"aaarrrh", 1}, {"animals020_1", 1}, {"animals020_2", 1}, {"animals020_3", 1},
    {"animals020_4", 1}, {"casmews4_2", 1}, {"cat01", 1}, {"cat02_10", 1}, {"cat03_1", 1},
    {"cat03_12", 1}, {"cat03_2", 1}, {"cat03_3", 1}, {"cat03_4", 1}, {"cat03_5", 1}, {"cat03_6", 1},
    {"cat03_8", 1}, {"cat03_9", 1}, {"catargument_1", 1}, {"catargument_2", 1},
    {"catargument_3", 1}, {"catargument_4", 1}, {"caterwaul_1", 1}, {"caterwaul_2", 1},
    {"kitten01_1", 1}, {"kitten01_5", 1}, {"kitten01_7", 1}, {"kitten01_12", 1}, {"kitten01_13", 1},
    {"miaou2", 1}, {"mraur2", 1},
    {"angrycat", 2}, {"cat03_11", 2}, {"cat03_7", 2}, {"catargument_5", 2}, {"catargument_6", 2},
    {"catargument_7", 2}, {"cathiss", 2}, {"catscrm", 2}, {"catticked", 2}, {"chatnerveux", 2},
    {"miaou3", 2}, {"Siamese", 2},
};

inline constexpr SampleSetEntry voices[] = {
    {"jpngrl008", 0}, {"jpngrl012", 0}, {"jpngrl024", 0}, {"jpngrl027", 0}, {"jpngrl028", 0},
    {"jpngrl029", 0}, {"jpngrl030", 0}, {"jpngrl034", 0}, {"jpngrl039", 0}, {"jpngrl040", 0},
    {"jpngrl043", 0}, {"jpngrl044", 0}, {"jpngrl045", 0}, {"jpngrl046", 0}, {"jpngrl047", 0},
    {"jpngrl051", 0}, {"jpngrl052", 0}, {"jpngrl053", 0}, {"jpngrl055", 0}, {"jpngrl056", 0},
    {"jpngrl059", 0}, {"jpngrl061", 0}, {"jpngrl067", 0}, {"jpngrl072", 0}, {"jpngrl073", 0},
    {"jpngrl078", 0}, {"jpngrl079", 0}, {"jpngrl080", 0}, {"jpngrl081", 0}, {"jpngrl083", 0},
    {"jpngrl089", 0}, {"jpngrl093", 0}, {"jpngrl094", 0}, {"jpngrl102", 0}, {"jpngrl103", 0},
    {"jpngrl108", 0}, {"jpngrl109", 0}, {"jpngrl110", 0}, {"jpngrl111", 0}, {"jpngrl113", 0},
    {"jpngrl117", 0}, {"jpngrl120", 0}, {"jpngrl121", 0}, {"jpngrl122", 0}, {"jpngrl124", 0},
    {"jpngrl127", 0}, {"jpngrl131", 0}, {"jpngrl133", 0}, {"jpngrl134", 0}, {"jpngrl135", 0},
    {"jpngrl142", 0}, {"jpngrl147", 0}, {"jpngrl148", 0}, {"jpngrl149", 0}, {"jpngrl152", 0},
    {"jpngrl155", 0}, {"jpngrl156", 0}, {"jpngrl183", 0},
    {"jpngrl001", 1}, {"jpngrl002", 1}, {"jpngrl003", 1}, {"jpngrl004", 1}, {"jpngrl005", 1},
    {"jpngrl006", 1}, {"jpngrl007", 1}, {"jpngrl009", 1}, {"jpngrl010", 1}, {"jpngrl011", 1},
    {"jpngrl013", 1}, {"jpngrl014", 1}, {"jpngrl015", 1}, {"jpngrl016", 1}, {"jpngrl017", 1},
    {"jpngrl018", 1}, {"jpngrl019", 1}, {"jpngrl020", 1}, {"jpngrl021", 1}, {"jpngrl022", 1},
    {"jpngrl023", 1}, {"jpngrl025", 1}, {"jpngrl026", 1}, {"jpngrl031", 1}, {"jpngrl032", 1},
    {"jpngrl033", 1}, {"jpngrl035", 1}, {"jpngrl036", 1}, {"jpngrl037", 1}, {"jpngrl038", 1},
    {"jpngrl041", 1}, {"jpngrl042", 1}, {"jpngrl048", 1}, {"jpngrl049", 1}, {"jpngrl050", 1},
    {"jpngrl054", 1}, {"jpngrl057", 1}, {"jpngrl058", 1}, {"jpngrl060", 1}, {"jpngrl062", 1},
    {"jpngrl063", 1}, {"jpngrl064", 1}, {"jpngrl065", 1}, {"jpngrl066", 1}, {"jpngrl068", 1},
    {"jpngrl069", 1}, {"jpngrl070", 1}, {"jpngrl071", 1}, {"jpngrl074", 1}, {"jpngrl075", 1},
    {"jpngrl076", 1}, {"jpngrl077", 1}, {"jpngrl082", 1}, {"jpngrl084", 1}, {"jpngrl085", 1},
    {"jpngrl086", 1}, {"jpngrl087", 1}, {"jpngrl088", 1}, {"jpngrl090", 1}, {"jpngrl091", 1},
    {"jpngrl092", 1}, {"jpngrl095", 1}, {"jpngrl096", 1}, {"jpngrl097", 1}, {"jpngrl098", 1},
    {"jpngrl099", 1}, {"jpngrl100", 1}, {"jpngrl101", 1}, {"jpngrl104", 1}, {"jpngrl105", 1},
    {"jpngrl106", 1}, {"jpngrl107", 1}, {"jpngrl112", 1}, {"jpngrl114", 1}, {"jpngrl115", 1},
    {"jpngrl116", 1}, {"jpngrl118", 1}, {"jpngrl119", 1}, {"jpngrl123", 1}, {"jpngrl125", 1},
    {"jpngrl126", 1}, {"jpngrl128", 1}, {"jpngrl129", 1}, {"jpngrl130", 1}, {"jpngrl132", 1},
    {"jpngrl136", 1}, {"jpngrl137", 1}, {"jpngrl138", 1}, {"jpngrl139", 1}, {"jpngrl140", 1},
    {"jpngrl141", 1}, {"jpngrl143", 1}, {"jpngrl144", 1}, {"jpngrl145", 1}, {"jpngrl146", 1},
    {"jpngrl150", 1}, {"jpngrl151", 1}, {"jpngrl153", 1}, {"jpngrl154", 1}, {"jpngrl157", 1},
    {"jpngrl158", 1},
};

}  // namespace sample_set_data

inline SampleSet SampleSet::get_cats()
{
    return {sample_set_data::cats, static_cast<int>(sizeof(sample_set_data::cats) / sizeof(SampleSetEntry))};
}

inline SampleSet SampleSet::get_voices()
{
    return {sample_set_data::voices, static_cast<int>(sizeof(sample_set_data::voices) / sizeof(SampleSetEntry))};
}

}  // namespace zarquette
