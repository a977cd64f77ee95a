#pragma once

namespace workbench {

/// What a program does before anything else, while it has one thread and has opened nothing:
/// - The numbers of missing standard streams are held, so that no file of the program gets what is
///   written to a stream.
/// - Nothing is left of its memory, which holds passwords, when it ends by a fault, nor may another
///   program of the same person look into it.
/// - A file over the size that the shell allows, and a reader that goes away, are failures of the
///   write that can be told, not the end of the program.
/// - What libraries make is readable by its owner alone.
/// - Variables by which the libraries for encryption would write keys down, or take settings or
///   authorities from elsewhere, are gone.
/// False where a standard stream can't be held: nothing may be opened then.
bool guardProcess();

}  // namespace workbench
