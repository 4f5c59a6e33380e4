#include "dsp/ProcessingForm.h"

ProcessingForms::ProcessingForms() : forms{ProcessingForm::Plain, ProcessingForm::Sse2}, count(2)
{
    // These ask the processor, and whether the operating system saves the wide registers.
    __builtin_cpu_init();
    if (!__builtin_cpu_supports("avx2"))
        return;
    forms[count++] = ProcessingForm::Avx2;
    if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq")
        && __builtin_cpu_supports("avx512vl"))
        forms[count++] = ProcessingForm::Avx512;
}

ProcessingForm bestProcessingForm()
{
    static const ProcessingForm best = ProcessingForms().best();
    return best;
}

const char* nameOf(ProcessingForm form)
{
    switch (form) {
    case ProcessingForm::Plain:
        return "plain";
    case ProcessingForm::Sse2:
        return "sse2";
    case ProcessingForm::Avx2:
        return "avx2";
    case ProcessingForm::Avx512:
        return "avx512";
    }
    return "";
}
