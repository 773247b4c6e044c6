// The Findings view.

export function create(root, text) {
  return { update(changed) {} };
}
