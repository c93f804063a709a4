"""Pictures of the alignment library's documentation, drawn from what the library itself computes."""
