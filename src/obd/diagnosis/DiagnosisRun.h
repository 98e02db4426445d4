#pragma once

/// The run of a diagnosis as a step of the link.
namespace dravik {

/// One step of the link that is the whole diagnosis. Leaves `ConnState` 3 when the interface can be
/// used for live data again, else 1, unless something else was asked of the link meanwhile.
void RunDiagnosis();

/// The trouble codes were cleared: what was found is not so any more.
void NoteCleared();

/// A connect has begun: what was found may be of another vehicle.
void NoteOtherVehicle();

/// True when the codes of the last diagnosis were cleared, so that it is to be brought up to date.
bool DiagnosisStale();

}  // namespace dravik
