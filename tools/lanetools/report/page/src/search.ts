// SPDX-License-Identifier: MIT
// Motifs in a read, on both strands.

const table = (text: string): Record<string, string> =>
  Object.fromEntries(text.split(" ").map((pair) => pair.split("=")));

/** The bases of each code. */
const codes = table("A=A C=C G=G T=T U=T R=AG Y=CT S=CG W=AT K=GT M=AC B=CGT D=AGT H=ACT V=ACG N=ACGT");

const complements = table("A=T C=G G=C T=A U=A R=Y Y=R S=S W=W K=M M=K B=V V=B D=H H=D N=N");

export interface Hit {
  /** Index of the first base, from 0, on the read as it is shown. */
  first: number;
  /** One past the last base. */
  end: number;
  strand: "+" | "-";
}

export function reverseComplement(motif: string): string {
  return [...motif]
    .reverse()
    .map((letter) => complements[letter]!)
    .join("");
}

function expression(motif: string): RegExp {
  // An N of the read is no evidence of any base, so it matches an N of the motif only.
  const parts = [...motif].map((letter) => (letter === "N" ? "." : `[${codes[letter]}]`));
  return new RegExp(`(?=${parts.join("")})`, "gi");
}

/** Every place of an IUPAC motif, by place, the given strand first; null for what is no motif. */
export function findMotif(read: string, text: string): Hit[] | null {
  const motif = text.toUpperCase().replace(/\s/g, "");
  if (motif === "" || [...motif].some((letter) => !(letter in codes))) return null;
  const hits = (pattern: string, strand: Hit["strand"]) =>
    [...read.matchAll(expression(pattern))].map(
      (match): Hit => ({
        first: match.index,
        end: match.index + motif.length,
        strand,
      }),
    );
  const other = reverseComplement(motif);
  const both = hits(motif, "+").concat(other === motif.replace(/U/g, "T") ? [] : hits(other, "-"));
  return both.sort((a, b) => a.first - b.first || a.strand.localeCompare(b.strand));
}
