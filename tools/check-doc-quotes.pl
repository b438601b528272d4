#!/usr/bin/env perl
# check-doc-quotes.pl [ROOT] [--update]
#
# The docs quote compiled code instead of copying it by hand. A quote in a page of
# docs/ is a fenced block right after a line
#     <!-- quote: tests/reference/bkupjobnotify.h class -->
# and must hold exactly the lines of that file between "// doc:class" and the next
# "// doc:end" (the marks themselves left out). Fails (exit 1) on any quote that
# differs, names a missing file or mark, or has no block; --update rewrites the
# quotes from the sources instead.
use strict;
use warnings;

my ($root, $update) = ('.', 0);
for (@ARGV) { if ($_ eq '--update') { $update = 1 } else { $root = $_ } }
$root =~ s{/+$}{};

sub region {
  my ($file, $name) = @_;
  open my $fh, '<', "$root/$file" or return (undef, "no file $file");
  my (@lines, $in, $found);
  while (my $line = <$fh>) {
    if ($line =~ m{^\s*//\s*doc:(\S+)\s*$}) {
      if ($in && $1 eq 'end') { $in = 0; last }
      if (!$in && $1 eq $name) { $in = 1; $found = 1; next }
    }
    push @lines, $line if $in;
  }
  return (undef, "no mark doc:$name in $file") unless $found;
  return (undef, "mark doc:$name in $file has no doc:end") if $in;
  return (join('', @lines), undef);
}

my ($pages, $quotes, @problems) = (0, 0);
opendir my $dh, "$root/docs" or die "check-doc-quotes: no $root/docs\n";
for my $page (sort grep { /\.md$/ } readdir $dh) {
  my $path = "$root/docs/$page";
  open my $fh, '<', $path or die "check-doc-quotes: $path: $!\n";
  my @lines = <$fh>;
  close $fh;
  $pages++;
  my @out;
  my $changed = 0;
  for (my $i = 0; $i < @lines; $i++) {
    push @out, $lines[$i];
    next unless $lines[$i] =~ /^<!--\s*quote:\s*(\S+)\s+(\S+)\s*-->\s*$/;
    my ($file, $name) = ($1, $2);
    $quotes++;
    my $where = "docs/$page:" . ($i + 1);
    if ($i + 1 >= @lines || $lines[$i + 1] !~ /^```/) {
      push @problems, "$where: the quote of $file $name has no fenced block after it";
      next;
    }
    my ($code, $error) = region($file, $name);
    my $j = $i + 2;
    $j++ while $j < @lines && $lines[$j] !~ /^```\s*$/;
    my $shown = join '', @lines[$i + 2 .. $j - 1];
    if (defined $error) {
      push @problems, "$where: $error";
    } elsif ($shown ne $code) {
      if ($update) {
        push @out, $lines[$i + 1], $code;
        $i = $j - 1;
        $changed = 1;
        next;
      }
      push @problems, "$where: the quote differs from $file (doc:$name); run tools/check-doc-quotes.pl --update";
    }
  }
  if ($changed) {
    open my $wh, '>', $path or die "check-doc-quotes: $path: $!\n";
    print $wh @out;
  }
}
print "check-doc-quotes: $_\n" for @problems;
print "check-doc-quotes: $pages pages, $quotes quotes, " . scalar(@problems) . " problems\n";
exit(@problems ? 1 : 0);
