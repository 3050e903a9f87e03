// A colour-matching module as other programs install them, as far as anyone asks. ADOBE_MODULE_DOUBLE_IS_NONE makes it
// a library that is no such module.
#ifdef ADOBE_MODULE_DOUBLE_IS_NONE
#define FUNCTION CMConvertNothing
#else
#define FUNCTION CMTranslateColors
#endif

extern "C" __declspec(dllexport) int __stdcall FUNCTION()
{
  return 0;
}
