// The selected bar, piece or work: its values, findings and lines in the source.

export function create(root, text) {
  return { update(changed) {} };
}
