// Words of the example sources: the panel description and the recipes that stand, in the
// unpacked modes files, for data the generator computes. The modes-file vocabulary itself is
// formats/keys.h.
#ifndef VEXA_EXAMPLES_GENERATOR_GENERATOR_WORDS_H_
#define VEXA_EXAMPLES_GENERATOR_GENERATOR_WORDS_H_

namespace vexa::example::words {

// panel.json
inline constexpr char kPanelName[] = "name";
inline constexpr char kPanelPrimaries[] = "primaries";
inline constexpr char kRed[] = "red";
inline constexpr char kGreen[] = "green";
inline constexpr char kBlue[] = "blue";
inline constexpr char kWhite[] = "white";

// Member name that stands for the panel key in the sources.
inline constexpr char kPanelPlaceholder[] = "@panel";

// A recipe: an object with "generate" naming what to compute, and its parameters.
inline constexpr char kGenerate[] = "generate";
inline constexpr char kRecipeIgc[] = "igc";      // inverse-gamma table: "curve", "entries", "form"
inline constexpr char kRecipeGc[] = "gc";        // gamma table: "curve", "entries", "form"
// 3D LUT: "target" ("sRGB", "P3") or "matrix" (three rows of three numbers, applied to the grid
// as it stands: a tuning table), and "form"
inline constexpr char kRecipeGamut[] = "gamut";
inline constexpr char kRecipePcc[] = "pcc";      // PCC section: "saturation" (default 1)

inline constexpr char kCurve[] = "curve";
inline constexpr char kEntries[] = "entries";
inline constexpr char kTarget[] = "target";
inline constexpr char kMatrix[] = "matrix";
inline constexpr char kSaturation[] = "saturation";
inline constexpr char kForm[] = "form";

inline constexpr char kCurveSrgb[] = "srgb";
inline constexpr char kCurveGamma22[] = "gamma2.2";

// "list": one comma-separated string (shared tables); "array": a JSON array (inline tables).
inline constexpr char kFormList[] = "list";
inline constexpr char kFormArray[] = "array";

}  // namespace vexa::example::words

#endif  // VEXA_EXAMPLES_GENERATOR_GENERATOR_WORDS_H_
