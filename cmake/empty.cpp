// Stands for a source where only its precompiled headers are wanted.
