#!/usr/bin/perl
# compile_type_library.pl DEFINITION OUTPUT WIDL [ARGUMENT...]: compiles a type library.
#
# widl knows no default texts for parameters by reference, though the format does: it gets a number for
# each, which is replaced in its output by the place of the text, added to the segment where texts of
# defaults lie.
use strict;
use warnings;

my ($definition, $output, @widl) = @ARGV;
my $first_number = 0x2000000;  # fits into the 26 bits that are kept in place of a value
my $text_type = 8;
my $value_in_place = 0x80000000 | $text_type << 26;
my $segment_of_values = 11;

sub read_file {
    my ($name) = @_;
    open(my $file, '<:raw', $name) or die "$name: $!\n";
    local $/;
    return scalar <$file>;
}

sub write_file {
    my ($name, $content) = @_;
    open(my $file, '>:raw', $name) or die "$name: $!\n";
    print {$file} $content or die "$name: $!\n";
    close($file) or die "$name: $!\n";
}

sub number_at { return unpack('V', substr($_[0], $_[1], 4)); }

sub entry_of_text {
    my ($text) = @_;
    my $entry = pack('vV', $text_type, length $text) . $text;
    $entry .= "\x57" while length($entry) % 4;
    return $entry;
}

# Every text of a parameter by reference becomes a number.
my @texts;
my $source = read_file($definition);
$source =~ s{defaultvalue\("([^"]*)"\)\] BSTR\*}{
    push @texts, $1;
    sprintf('defaultvalue(%d)] BSTR*', $first_number + $#texts)
}ge;
write_file("$output.idl", $source);
my $messages = qx(@{[join ' ', map { "'$_'" } @widl, '-t', '-o', $output, "$output.idl"]} 2>&1);
die $messages if $? != 0 || $messages =~ /error/;

# The segments' places and lengths stand behind the header and the table of the types.
my $library = read_file($output);
my $types = number_at($library, 0x20);
my $directory = 0x54 + 4 * $types + (number_at($library, 0x14) & 0x100 ? 4 : 0);
my $place = $directory + 16 * $segment_of_values;
my ($offset, $length) = unpack('VV', substr($library, $place, 8));
my $values = $length == 0 || $offset == 0xFFFFFFFF ? '' : substr($library, $offset, $length);
for my $index (0 .. $#texts) {
    my $number = pack('V', $value_in_place | ($first_number + $index));
    my $found = index($library, $number);
    die "default text $index is not in the library\n" if $found < 0 || index($library, $number, $found + 1) >= 0;
    substr($library, $found, 4) = pack('V', length $values);
    $values .= entry_of_text($texts[$index]);
}
substr($library, $place, 8) = pack('VV', length $library, length $values);
write_file($output, $library . $values);
