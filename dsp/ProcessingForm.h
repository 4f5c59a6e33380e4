// The forms of the audio path: plain C++, and kernels for three instruction sets. All give the same
// bits.
#pragma once

enum class ProcessingForm { Plain, Sse2, Avx2, Avx512 };

// The forms that this processor and operating system can run, best last; Plain is always first.
class ProcessingForms {
public:
    ProcessingForms();

    const ProcessingForm* begin() const { return forms; }
    const ProcessingForm* end() const { return forms + count; }
    ProcessingForm best() const { return forms[count - 1]; }

private:
    ProcessingForm forms[4];
    int count;
};

// The best form on this machine; detected at the first call.
ProcessingForm bestProcessingForm();

// "plain", "sse2", "avx2" or "avx512".
const char* nameOf(ProcessingForm form);
