<root>
</root>

