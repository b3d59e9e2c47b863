#pragma once

/// All offline signal processing of the namespace DSP: functions without state on buffers of mono
/// float samples at DSP::sampleRate. They never fail: parameters out of range are moved into it,
/// and input that nothing can be done with comes back unchanged. They may run on any thread.

#include "VornicCore/base/SampleRate.h"
#include "VornicCore/dsp/Biquad.h"
#include "VornicCore/dsp/Body.h"
#include "VornicCore/dsp/Damping.h"
#include "VornicCore/dsp/Drive.h"
#include "VornicCore/dsp/Level.h"
#include "VornicCore/dsp/Onset.h"
#include "VornicCore/dsp/Resample.h"
#include "VornicCore/dsp/Tone.h"
#include "VornicCore/dsp/Transient.h"
#include "VornicCore/dsp/TrimTail.h"
