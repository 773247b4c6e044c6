// The Tables view.

export function create(root, text) {
  return { update(changed) {} };
}
